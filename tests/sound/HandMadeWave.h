#pragma once

#include <QByteArray>
#include <cstdint>
#include <optional>

/// RIFF WAVE files put together byte by byte, also such as no program should write.
namespace sound::test {

inline QByteArray littleEndian(std::uint64_t number, int size)
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes.append(static_cast<char>(number >> (8 * i)));
    return bytes;
}

/// A chunk with its padding. Its size is told as @p size where that is given.
inline QByteArray chunk(const QByteArray& name, const QByteArray& body, std::optional<std::uint32_t> size = {})
{
    return name + littleEndian(size.value_or(static_cast<std::uint32_t>(body.size())), 4) + body +
           QByteArray(body.size() % 2, '\0');
}

/// All that the numbers of a format chunk are made of; those that follow from others can be told otherwise.
struct Form
{
    int tag = 1;
    int channels = 2;
    std::uint32_t rate = 44100;
    int bits = 16;
    std::optional<std::uint32_t> bytesASecond = {};
    std::optional<int> bytesAFrame = {};
};

inline QByteArray formBody(const Form& form)
{
    const int frame = form.channels * form.bits / 8;
    return littleEndian(static_cast<std::uint64_t>(form.tag), 2) +
           littleEndian(static_cast<std::uint64_t>(form.channels), 2) + littleEndian(form.rate, 4) +
           littleEndian(form.bytesASecond.value_or(form.rate * static_cast<std::uint32_t>(frame)), 4) +
           littleEndian(static_cast<std::uint64_t>(form.bytesAFrame.value_or(frame)), 2) +
           littleEndian(static_cast<std::uint64_t>(form.bits), 2);
}

inline QByteArray formChunk(const Form& form = {})
{
    return chunk("fmt ", formBody(form));
}

/// The long form, in which the tag stands at the end.
inline QByteArray extensibleChunk(
    Form form, int usedBits, const QByteArray& restOfGuid = QByteArray::fromHex("000000001000800000aa00389b71"))
{
    const int tag = form.tag;
    form.tag = 0xFFFE;
    return chunk("fmt ", formBody(form) + littleEndian(22, 2) +
                             littleEndian(static_cast<std::uint64_t>(usedBits), 2) + littleEndian(3, 4) +
                             littleEndian(static_cast<std::uint64_t>(tag), 2) + restOfGuid);
}

inline QByteArray dataChunk(const QByteArray& samples, std::optional<std::uint32_t> size = {})
{
    return chunk("data", samples, size);
}

inline QByteArray riff(const QByteArray& chunks, std::optional<std::uint32_t> size = {})
{
    return "RIFF" + littleEndian(size.value_or(static_cast<std::uint32_t>(chunks.size() + 4)), 4) + "WAVE" + chunks;
}

/// As files beyond 4 GiB are; the chunks of the sound tell all ones as its size.
inline QByteArray rf64(const QByteArray& chunks, std::uint64_t soundSize,
                       std::optional<std::uint64_t> riffSize = {})
{
    const std::uint64_t size = riffSize.value_or(static_cast<std::uint64_t>(4 + 36 + chunks.size()));
    return "RF64" + littleEndian(0xFFFFFFFF, 4) + "WAVE" +
           chunk("ds64", littleEndian(size, 8) + littleEndian(soundSize, 8) + QByteArray(12, '\0')) + chunks;
}

/// So many bytes, no two alike that stand near each other.
inline QByteArray countingBytes(qsizetype count)
{
    QByteArray bytes(count, '\0');
    for (qsizetype i = 0; i < count; ++i)
        bytes[i] = static_cast<char>(i * 37 + i / 256);
    return bytes;
}

}  // namespace sound::test
