#pragma once

class MsgBox;
class OutputMixer;
class Slider;

/// Puts the volume of the system's speakers into @p sldVolume, whose range is the mixer's, and tells it in whole
/// tenths of the full volume as the slider's tool tip.
///
/// Speakers that are not there, or have no volume control, count as 0. A control that can't be read leaves the
/// slider alone; so does a mixer that can't be opened, of which the user is told.
void ReadMasterVolume(OutputMixer& mixer, Slider& sldVolume, MsgBox& msgBox);
