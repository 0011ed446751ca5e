#pragma once

#include "sound/disc/DiscPlan.h"
#include "sound/disc/SectorFeed.h"

#include <cstdint>
#include <vector>

/// Sectors of which no two are alike.
class PatternFeed : public sound::SectorFeed
{
public:
    static constexpr int endless = 1 << 30;

    /// It ends after that many.
    explicit PatternFeed(int sectors = endless)
        : left(sectors)
    {
    }

    static std::uint8_t byteAt(std::size_t position)
    {
        return static_cast<std::uint8_t>((position * 2654435761U) >> 13U);
    }

    static std::vector<std::uint8_t> bytes(int sectors)
    {
        std::vector<std::uint8_t> all(static_cast<std::size_t>(sectors) * sound::Sectors::bytes);
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = byteAt(i);
        return all;
    }

    bool read(std::span<std::byte> wanted) override
    {
        ++calls;
        left -= static_cast<int>(wanted.size() / sound::Sectors::bytes);
        if (left < 0 || wanted.size() % sound::Sectors::bytes != 0)
            return false;
        for (std::byte& byte : wanted)
            byte = std::byte{byteAt(position++)};
        return true;
    }

    int calls = 0;

private:
    int left;
    std::size_t position = 0;
};
