#pragma once
// The widget list: a table whose rows can be dragged to another place.
// Dropping a row asks the window to move that widget's line, which is also
// its drawing order on the canvas.

#include <QDropEvent>
#include <QTableView>

namespace vantile {

class TableView : public QTableView
{
    Q_OBJECT
public:
    explicit TableView(QWidget *parent = nullptr) : QTableView(parent)
    {
        setDragEnabled(true);
        setAcceptDrops(true);
        setDropIndicatorShown(true);
        setDragDropMode(QAbstractItemView::InternalMove);
        setDefaultDropAction(Qt::MoveAction);
    }

signals:
    // The row `from` is to stand at row `to`.
    void updateTableView(int from, int to);

protected:
    void dropEvent(QDropEvent *event) override
    {
        const int from = currentIndex().row();
        QModelIndex target = indexAt(event->pos());
        const int to = target.isValid() ? target.row() : model()->rowCount() - 1;
        event->setDropAction(Qt::IgnoreAction); // the window rebuilds the rows itself
        event->accept();
        if (from >= 0 && from != to)
            emit updateTableView(from, to);
    }
};

} // namespace vantile
