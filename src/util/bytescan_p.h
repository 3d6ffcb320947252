// Looking for bytes many at a time: eight in a 64-bit word, or sixteen
// with one vector compare where the processor has it. For the scanners
// whose texts are too short for memchr's call to pay off, and for those
// that mark every place of a byte at once.
#ifndef VYR_UTIL_BYTESCAN_P_H
#define VYR_UTIL_BYTESCAN_P_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

// Copies `count` bytes, at most kMost (a power of two up to 64), with two
// moves of a fixed size that may overlap, and no call: for the short runs
// that a call to memcpy would cost more than.
template <std::size_t kMost>
inline void copyShort(char *to, const char *from, std::size_t count)
{
    static_assert(kMost >= 4 && kMost <= 64 && std::has_single_bit(kMost));
    if constexpr (kMost > 32) {
        if (count >= 32) {
            std::memcpy(to, from, 32);
            std::memcpy(to + count - 32, from + count - 32, 32);
            return;
        }
    }
    if constexpr (kMost > 16) {
        if (count >= 16) {
            std::memcpy(to, from, 16);
            std::memcpy(to + count - 16, from + count - 16, 16);
            return;
        }
    }
    if constexpr (kMost > 8) {
        if (count >= 8) {
            std::memcpy(to, from, 8);
            std::memcpy(to + count - 8, from + count - 8, 8);
            return;
        }
    }
    if (count >= 4) {
        std::memcpy(to, from, 4);
        std::memcpy(to + count - 4, from + count - 4, 4);
    } else if (count > 0) {
        to[0] = from[0];
        to[count / 2] = from[count / 2];
        to[count - 1] = from[count - 1];
    }
}

// A bit for each of the 16 bytes at `bytes` that equals `byte`, the first
// byte's the lowest.
inline unsigned marksOf16(const char *bytes, unsigned char byte)
{
#if defined(__SSE2__)
    const __m128i all = _mm_loadu_si128(reinterpret_cast<const __m128i *>(bytes));
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(all, _mm_set1_epi8(static_cast<char>(byte)))));
#else
    return byteMask(bytesEqual(loadWord(bytes), byte)) | byteMask(bytesEqual(loadWord(bytes + 8), byte)) << 8;
#endif
}

// The same for the 64 bytes at `bytes`.
inline std::uint64_t marksOf64(const char *bytes, unsigned char byte)
{
    std::uint64_t marks = 0;
    for (int i = 0; i < 4; ++i)
        marks |= std::uint64_t(marksOf16(bytes + 16 * i, byte)) << (16 * i);
    return marks;
}

// The same for the first `count` (fewer than 64) bytes at `bytes`, read
// without going past them.
inline std::uint64_t marksOfFirst(const char *bytes, std::size_t count, unsigned char byte)
{
    std::uint64_t marks = 0;
    if (count < 16) {
        for (std::size_t i = 0; i < count; ++i)
            marks |= std::uint64_t(bytes[i] == static_cast<char>(byte)) << i;
        return marks;
    }
    std::size_t i = 0;
    for (; i + 16 <= count; i += 16)
        marks |= std::uint64_t(marksOf16(bytes + i, byte)) << i;
    // The rest as the end of the last 16 bytes.
    if (i < count)
        marks |= std::uint64_t(marksOf16(bytes + count - 16, byte) >> (16 - (count - i))) << i;
    return marks;
}

} // namespace vyr::bytescan

#endif // VYR_UTIL_BYTESCAN_P_H
