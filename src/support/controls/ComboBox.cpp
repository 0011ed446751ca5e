#include "support/controls/ComboBox.h"

// The box selects its first item by itself when items come into an empty list, unless it has a place-holder to
// show.
//
// A pick by the user sends currentIndexChanged where the index changes, and activated always, in this order; a put
// by code sends the first only. What the first has reported the second passes over.
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

void ComboBox::setListIndex(int index)
{
    QComboBox::setCurrentIndex(index);
    reported = false;
}

void ComboBox::setCurrentIndex(int index)
{
    setListIndex(index);
}
