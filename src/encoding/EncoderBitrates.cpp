#include "encoding/EncoderBitrates.h"

#include "support/Numbers.h"
#include "support/controls/ComboBox.h"

#include <QString>

namespace {

constexpr int usualBitrate = 128;

}  // namespace

void offerBitrates(ComboBox& list)
{
    for (const int bitrate : {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320})
        list.addItem(QString::number(bitrate));
    list.setListIndex(list.findText(QString::number(usualBitrate)));
}

int chosenNumber(const ComboBox& list)
{
    return leadingNumber(list.currentText());
}
