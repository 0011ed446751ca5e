#pragma once

#include <QComboBox>

/// A pick-only drop-down list. No item is selected until someone selects one.
///
/// Click() tells the one routine that acts on a selection. It runs exactly once for each pick by the user, also of
/// the item that is selected already, and for each put of another index by code. A put of -1 runs nothing.
class ComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ComboBox(QWidget* parent = nullptr);

    int listIndex() const;
    void setListIndex(int index);

    /// As setListIndex: the put of this control, whatever name it is called by.
    void setCurrentIndex(int index);

    void showPopup() override;

signals:
    void Click();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    bool reported = false;
};
