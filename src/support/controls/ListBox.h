#pragma once

#include <QListView>
#include <QStringList>

/// A plain list of texts of which one, or none, is selected.
///
/// Click() tells the one routine that acts on a selection. It runs for each pick by the user (any mouse button,
/// also on the item that is selected already; arrow keys, Space and typed letters where they move the selection)
/// and for each put of another index by code. It runs exactly once each time; a double click counts as one pick.
///
/// Removing the selected item and emptying the list leave no selection and run nothing. Lists of a million items
/// are fine: texts are added in bulk and all rows are equally high.
///
/// The pointer over an item shows the whole text, where the list has no tool tip of its own.
class ListBox : public QListView
{
    Q_OBJECT

public:
    explicit ListBox(QWidget* parent = nullptr);

    int count() const;

    /// Empty for an index that is not in the list.
    QString itemText(int index) const;

    void addItem(const QString& text);
    void addItems(const QStringList& texts);

    /// Indices that are not in the list change nothing.
    void removeItem(int index);
    void clear();

    /// The selected index, -1 for none.
    int listIndex() const;

    /// Selects an item; -1 takes the selection away and runs nothing. An index beyond the list changes nothing.
    void setListIndex(int index);

    /// The index of the item under a point of the viewport, -1 beside the items.
    int itemAtPoint(const QPoint& point) const;

signals:
    void Click();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    class Texts;

    void pick(int index);
    void moveSelectionTo(int index);

    Texts* texts;
    bool movingSelection = false;
};
