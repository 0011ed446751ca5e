#include "playback/ReadMasterVolume.h"

#include "engines/OutputMixer.h"
#include "support/Numbers.h"
#include "support/controls/Slider.h"
#include "support/dialogs/MsgBox.h"

namespace {

constexpr int unreadable = -1;
constexpr double unitsATenth = 6553;

}  // namespace

void ReadMasterVolume(OutputMixer& mixer, Slider& sldVolume, MsgBox& msgBox)
{
    if (mixer.mixerOpen() != 0) {
        msgBox.show(
            QStringLiteral("Couldn't open the mixer please check if a audio mixer is installed then retry."),
            MsgBox::Look::Plain);
        return;
    }
    const int MasterVolume = mixer.mixerGetLineControls() ? mixer.mixerGetControlDetails() : 0;
    if (MasterVolume == unreadable)
        return;
    sldVolume.setValue(MasterVolume);
    // The slider's change has written a tool tip of its own: this one takes its place.
    sldVolume.setToolTip(QString::number(roundHalfToEven(MasterVolume / unitsATenth)));
}
