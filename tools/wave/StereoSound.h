#pragma once

#include <cstddef>
#include <vector>

/// Sound of two channels in memory, full scale at 1. Both channels have the same number of frames.
struct StereoSound
{
    int rate = 44100;
    std::vector<float> left;
    std::vector<float> right;

    std::size_t frames() const { return left.size(); }
    double seconds() const { return static_cast<double>(frames()) / rate; }
};

/// What a single ear would hear: the mean of both channels.
std::vector<float> mono(const StereoSound& sound);

/// The frames that sound between two moments, cut to the sound.
StereoSound stretchOf(const StereoSound& sound, double fromSecond, double toSecond);
