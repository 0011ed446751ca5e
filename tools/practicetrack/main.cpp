#include "practicetrack/Mp3File.h"
#include "practicetrack/Track.h"
#include "wave/WavFile.h"

#include <filesystem>
#include <iostream>
#include <string>

/// Plays the practice track into the folder that is named: as the MP3 that a player opens, and as the sound before
/// its encoding, which measurements compare with.
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "Usage: practicetrack FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::filesystem::create_directories(folder);

    const StereoSound sound = practice::track();
    if (!writeWav(folder / "before-the-lesson.wav", sound)) {
        std::cerr << "before-the-lesson.wav could not be written\n";
        return 1;
    }
    const std::string error =
        practice::writeMp3(folder / "before-the-lesson.mp3", sound, "Before the Lesson", "The Larkspin Quartet");
    if (!error.empty()) {
        std::cerr << "before-the-lesson.mp3 could not be written: " << error << '\n';
        return 1;
    }
    return 0;
}
