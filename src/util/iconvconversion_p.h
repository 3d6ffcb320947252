// A thin owner of an iconv conversion descriptor, and the loop that runs a
// whole text through one.
#ifndef VYR_UTIL_ICONVCONVERSION_P_H
#define VYR_UTIL_ICONVCONVERSION_P_H

#include <iconv.h>

#include <cerrno>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vyr {

class IconvConversion
{
public:
    IconvConversion(const std::string &to, const std::string &from)
        : descriptor_(iconv_open(to.c_str(), from.c_str()))
    {}
    ~IconvConversion()
    {
        if (isValid())
            iconv_close(descriptor_);
    }
    IconvConversion(const IconvConversion &) = delete;
    IconvConversion &operator=(const IconvConversion &) = delete;

    bool isValid() const { return descriptor_ != reinterpret_cast<iconv_t>(-1); }
    iconv_t get() const { return descriptor_; }

    // Back to the initial shift state, forgetting any partial input.
    void reset() const { iconv(descriptor_, nullptr, nullptr, nullptr, nullptr); }

    // The bytes a short `input` (a character or two) makes in one call with
    // a final flush, from the initial shift state; nothing when iconv
    // refuses the input or holds part of it back, with `error` (when given)
    // saying why.
    std::optional<std::string> convertShort(std::string_view input, int *error = nullptr) const
    {
        reset();
        char buffer[32];
        char *in = const_cast<char *>(input.data());
        std::size_t inLeft = input.size();
        char *out = buffer;
        std::size_t outLeft = sizeof buffer;
        int failure = 0;
        if (iconv(descriptor_, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1)
            || iconv(descriptor_, nullptr, nullptr, &out, &outLeft) == static_cast<std::size_t>(-1))
            failure = errno;
        else if (inLeft != 0)
            failure = EINVAL;
        if (error)
            *error = failure;
        if (failure != 0)
            return std::nullopt;
        return std::string(buffer, static_cast<std::size_t>(out - buffer));
    }

    // Converts all of `input` (bytes) and appends the result to `out`, a
    // std::string or std::u16string. Where iconv stops at input it cannot
    // convert, the descriptor is brought back to its initial shift state and
    // `onStop(input, inputLeft)` is called; it must consume input (at least
    // one unit) and returns the unit that stands for what it consumed.
    template <typename String, typename OnStop>
    void convertAll(const char *input, std::size_t inputLeft, String &out, OnStop onStop) const
    {
        using Unit = typename String::value_type;
        reset();
        std::size_t usedUnits = out.size();
        // Most texts need no more room than this; E2BIG grows it. The room
        // only ever grows: sizing it anew at each stop would fill the rest
        // of it again, and a text of undecodable bytes stops at every byte.
        out.resize(usedUnits + inputLeft + 16);
        const auto grow = [&out] { out.resize(out.size() * 2 + 16); };
        auto convert = [&](char **in, std::size_t *inLeft) {
            for (;;) {
                char *base = reinterpret_cast<char *>(out.data());
                char *outPtr = base + usedUnits * sizeof(Unit);
                std::size_t outLeft = (out.size() - usedUnits) * sizeof(Unit);
                const std::size_t result = iconv(descriptor_, in, inLeft, &outPtr, &outLeft);
                const int error = errno;
                usedUnits = static_cast<std::size_t>(outPtr - base) / sizeof(Unit);
                if (result != static_cast<std::size_t>(-1))
                    return 0;
                if (error != E2BIG)
                    return error;
                grow();
            }
        };
        char *in = const_cast<char *>(input);
        while (inputLeft > 0 && convert(&in, &inputLeft) != 0) {
            convert(nullptr, nullptr); // leave any shift state before the replacement
            const char *stop = in;
            const Unit replacement = onStop(stop, inputLeft);
            in = const_cast<char *>(stop);
            if (usedUnits == out.size())
                grow();
            out[usedUnits++] = replacement;
        }
        convert(nullptr, nullptr);
        out.resize(usedUnits);
    }

private:
    iconv_t descriptor_;
};

} // namespace vyr

#endif // VYR_UTIL_ICONVCONVERSION_P_H
