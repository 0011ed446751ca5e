#include "support/controls/ListBox.h"

#include "support/ToolTipText.h"
#include "support/controls/AiryRows.h"

#include <QAbstractListModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <algorithm>

class ListBox::Texts : public QAbstractListModel
{
public:
    explicit Texts(ListBox* list)
        : QAbstractListModel(list)
        , list(list)
    {
    }

    int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(items.size());
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        const QString text = items.value(index.row());
        if (role == Qt::DisplayRole)
            return text;
        if (role == Qt::ToolTipRole && list->toolTip().isEmpty())
            return toolTipText(text);
        return {};
    }

    void append(const QStringList& added)
    {
        const int first = static_cast<int>(items.size());
        beginInsertRows({}, first, first + static_cast<int>(added.size()) - 1);
        items.append(added);
        endInsertRows();
    }

    void remove(int row)
    {
        beginRemoveRows({}, row, row);
        items.removeAt(row);
        endRemoveRows();
    }

    void clear()
    {
        beginResetModel();
        items.clear();
        endResetModel();
    }

    QStringList items;

private:
    const ListBox* list;
};

ListBox::ListBox(QWidget* parent)
    : QListView(parent)
    , texts(new Texts(this))
{
    setModel(texts);
    setItemDelegate(new AiryRows(this));
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

int ListBox::count() const
{
    return static_cast<int>(texts->items.size());
}

QString ListBox::itemText(int index) const
{
    return texts->items.value(index);
}

void ListBox::addItem(const QString& text)
{
    addItems({text});
}

void ListBox::addItems(const QStringList& added)
{
    if (!added.isEmpty())
        texts->append(added);
}

// The view would select a neighbour in place of an item that goes. The keyboard's place stays there all the same,
// so that the next arrow key picks the neighbour and not the top of the list.
void ListBox::removeItem(int index)
{
    if (index < 0 || index >= count())
        return;
    const QScopedValueRollback moving(movingSelection, true);
    const bool keyboardWasHere = currentIndex().row() == index;
    if (keyboardWasHere)
        selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
    if (listIndex() == index)
        clearSelection();
    texts->remove(index);
    if (keyboardWasHere && count() > 0)
        selectionModel()->setCurrentIndex(texts->index(std::min(index, count() - 1)),
                                          QItemSelectionModel::NoUpdate);
}

void ListBox::clear()
{
    const QScopedValueRollback moving(movingSelection, true);
    texts->clear();
}

int ListBox::listIndex() const
{
    const QModelIndexList selected = selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : selected.first().row();
}

void ListBox::setListIndex(int index)
{
    if (index >= count() || index == listIndex())
        return;
    if (index >= 0)
        pick(index);
    else
        moveSelectionTo(-1);
}

int ListBox::itemAtPoint(const QPoint& point) const
{
    return indexAt(point).row();
}

void ListBox::pick(int index)
{
    moveSelectionTo(index);
    emit Click();
}

void ListBox::moveSelectionTo(int index)
{
    const QScopedValueRollback moving(movingSelection, true);
    if (index < 0)
        clearSelection();
    else
        setCurrentIndex(texts->index(index));
}

void ListBox::mousePressEvent(QMouseEvent* event)
{
    event->accept();
    if (const int index = itemAtPoint(event->position().toPoint()); index >= 0)
        pick(index);
}

void ListBox::mouseDoubleClickEvent(QMouseEvent* event)
{
    event->accept();
    const int index = itemAtPoint(event->position().toPoint());
    if (index >= 0 && index != listIndex())
        pick(index);
}

// A press is the whole pick: dragging on over other items must not pick those as well.
void ListBox::mouseMoveEvent(QMouseEvent* event)
{
    event->accept();
}

void ListBox::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
}

// With nothing selected the first arrow key picks the item that has the keyboard's place instead of stepping over
// it. The routine runs after the view is done with the key: it may show a box or change the list.
void ListBox::keyPressEvent(QKeyEvent* event)
{
    const int before = listIndex();
    const bool arrow = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (before < 0 && arrow && currentIndex().isValid()) {
        pick(currentIndex().row());
        return;
    }
    {
        const QScopedValueRollback moving(movingSelection, true);
        QListView::keyPressEvent(event);
    }
    if (const int after = listIndex(); after >= 0 && after != before)
        emit Click();
}

QItemSelectionModel::SelectionFlags ListBox::selectionCommand(const QModelIndex& index, const QEvent*) const
{
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

// Whoever selects past the mouse and the keyboard (a screen reader) picks too.
void ListBox::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QListView::selectionChanged(selected, deselected);
    if (!movingSelection && !selected.isEmpty())
        emit Click();
}

#include "moc_ListBox.cpp"
