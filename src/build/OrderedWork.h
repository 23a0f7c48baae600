#pragma once
// Work on numbered items that is made on worker threads and taken, in
// number order, on the calling thread: pictures are decoded and encoded
// while the ones before them are written. At most `window` items are made
// ahead of the one being taken, so the memory held does not grow with the
// number of items.
//
// make(i) runs on a worker; with one worker the items are made strictly
// one after the other (a reader that keeps state between items may be
// used). take(i, item) runs on the calling thread in order 0, 1, ...;
// when it returns false no further item is taken and the workers stop
// after the ones they are making.

#include <QThread>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace vantile {

namespace OrderedWork {

// The workers for independent items on this machine: its cores, 1 to 4.
inline int workerCount()
{
    return std::clamp(QThread::idealThreadCount(), 1, 4);
}

template <typename Item>
void run(int count, int workers, int window, const std::function<Item(int)> &make,
         const std::function<bool(int, Item &)> &take)
{
    if (count <= 0)
        return;
    workers = std::clamp(workers, 1, count);
    window = std::max(window, workers);

    std::mutex mutex;
    std::condition_variable madeOne;  // a slot was filled
    std::condition_variable tookOne;  // the taker moved on
    std::vector<std::optional<Item>> made(static_cast<size_t>(window));
    int next = 0;       // the next number a worker makes (guarded)
    int taken = 0;      // items taken so far (guarded)
    bool stop = false;  // guarded

    auto work = [&] {
        for (;;) {
            int i;
            {
                std::unique_lock<std::mutex> lock(mutex);
                tookOne.wait(lock, [&] { return stop || next >= count || next < taken + window; });
                if (stop || next >= count)
                    return;
                i = next++;
            }
            Item item = make(i);
            {
                std::lock_guard<std::mutex> lock(mutex);
                made[size_t(i % window)] = std::move(item);
            }
            madeOne.notify_all();
        }
    };

    std::vector<std::thread> threads;
    threads.reserve(size_t(workers));
    for (int w = 0; w < workers; ++w)
        threads.emplace_back(work);

    for (int i = 0; i < count; ++i) {
        Item item;
        {
            std::unique_lock<std::mutex> lock(mutex);
            std::optional<Item> &slot = made[size_t(i % window)];
            madeOne.wait(lock, [&] { return slot.has_value(); });
            item = std::move(*slot);
            slot.reset();
        }
        const bool goOn = take(i, item);
        {
            std::lock_guard<std::mutex> lock(mutex);
            taken = i + 1;
            if (!goOn)
                stop = true;
        }
        tookOne.notify_all();
        if (!goOn)
            break;
    }
    for (std::thread &t : threads)
        t.join();
}

} // namespace OrderedWork

} // namespace vantile
