#include "support/controls/ComboBox.h"

// The box selects its first item by itself when items come into an empty list, unless it has a place-holder to
// show.
//
// A pick by the user sends currentIndexChanged where the index changes, and activated always, in this order; a put
// by code sends the first only. What the first has reported the second passes over. Changes that come past this
// class (an item that is taken away) must not be held against the next pick: each pick begins afresh.
ComboBox::ComboBox(QWidget* parent)
    : QComboBox(parent)
{
    setPlaceholderText(QStringLiteral(" "));
    connect(this, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index < 0)
            return;
        reported = true;
        emit Click();
    });
    connect(this, &QComboBox::activated, this, [this] {
        const bool alreadyReported = reported;
        reported = false;
        if (!alreadyReported)
            emit Click();
    });
}

int ComboBox::listIndex() const
{
    return currentIndex();
}

// A put from inside the routine that acts on a pick must not make that pick count as unreported.
void ComboBox::setListIndex(int index)
{
    const bool before = reported;
    QComboBox::setCurrentIndex(index);
    reported = before;
}

void ComboBox::setCurrentIndex(int index)
{
    setListIndex(index);
}

void ComboBox::showPopup()
{
    reported = false;
    QComboBox::showPopup();
}

void ComboBox::keyPressEvent(QKeyEvent* event)
{
    reported = false;
    QComboBox::keyPressEvent(event);
}

void ComboBox::wheelEvent(QWheelEvent* event)
{
    reported = false;
    QComboBox::wheelEvent(event);
}

#include "moc_ComboBox.cpp"
