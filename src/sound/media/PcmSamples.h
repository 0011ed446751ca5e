#pragma once

#include <cstdint>
#include <span>

namespace sound {

/// How the plain samples of a file stand there.
struct PcmForm
{
    enum class Kind
    {
        Unsigned8,  ///< Silence is 128.
        Signed8,
        Integer16,
        Integer24,
        Integer24In32,  ///< The lower three of four bytes. What stands in the fourth does not count.
        Integer32,
        Float32,
        Float64,
    };

    Kind kind = Kind::Integer16;
    bool highByteFirst = false;
};

constexpr int bytesPerSample(const PcmForm& form)
{
    switch (form.kind) {
    case PcmForm::Kind::Unsigned8:
    case PcmForm::Kind::Signed8:
        return 1;
    case PcmForm::Kind::Integer16:
        return 2;
    case PcmForm::Kind::Integer24:
        return 3;
    case PcmForm::Kind::Integer24In32:
    case PcmForm::Kind::Integer32:
    case PcmForm::Kind::Float32:
        return 4;
    case PcmForm::Kind::Float64:
        break;
    }
    return 8;
}

/// Brings samples to floats, as toFloat() does each. @p packed holds as many as @p samples.
void unpackPcm(const PcmForm& form, std::span<const std::uint8_t> packed, std::span<float> samples);

}  // namespace sound
