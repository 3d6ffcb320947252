// Looking for bytes eight at a time in a 64-bit word, for the scanners
// whose texts are too short for memchr's call to pay off.
#ifndef VYR_UTIL_BYTESCAN_P_H
#define VYR_UTIL_BYTESCAN_P_H

#include <bit>
#include <cstdint>
#include <cstring>

namespace vyr::bytescan {

static_assert(std::endian::native == std::endian::little, "the byte scanners read words little-endian");

inline constexpr std::uint64_t kOnes = 0x0101010101010101ULL;

inline std::uint64_t loadWord(const char *bytes)
{
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

// The high bit of each byte of `word` that equals `byte`, and no other bit.
inline std::uint64_t bytesEqual(std::uint64_t word, unsigned char byte)
{
    constexpr std::uint64_t kLow7 = 0x7F7F7F7F7F7F7F7FULL;
    const std::uint64_t x = word ^ (kOnes * byte);
    return ~(((x & kLow7) + kLow7) | x | kLow7);
}

// The marks of bytesEqual() gathered into one bit per byte.
inline unsigned byteMask(std::uint64_t marks)
{
    return static_cast<unsigned>(((marks >> 7) * 0x0102040810204080ULL) >> 56);
}

// The offset of the first byte equal to `byte` among the 16 at `bytes`, 16
// when there is none; no branch.
inline std::size_t firstOf16(const char *bytes, unsigned char byte)
{
    const unsigned mask
        = byteMask(bytesEqual(loadWord(bytes), byte)) | byteMask(bytesEqual(loadWord(bytes + 8), byte)) << 8 | 1u << 16;
    return static_cast<std::size_t>(std::countr_zero(mask));
}

// Whether any of the first `count` (at most 16) of the 16 bytes at `bytes`
// is above 127.
inline bool highBitsOf16(const char *bytes, std::size_t count)
{
    constexpr std::uint64_t kHighBits = 0x8080808080808080ULL;
    const unsigned mask = byteMask(loadWord(bytes) & kHighBits) | byteMask(loadWord(bytes + 8) & kHighBits) << 8;
    return (mask & ((1u << count) - 1)) != 0;
}

} // namespace vyr::bytescan

#endif // VYR_UTIL_BYTESCAN_P_H
