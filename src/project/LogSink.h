#pragma once
// The core reports through a log sink; the designer shows it in its log
// pane, the command-line tools print it.

#include <QString>
#include <functional>

namespace vantile {

using LogSink = std::function<void(const QString &line)>;

inline void logTo(const LogSink &sink, const QString &line)
{
    if (sink)
        sink(line);
}

} // namespace vantile
