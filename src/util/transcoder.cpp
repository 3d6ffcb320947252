#include "util/transcoder_p.h"

#include "util/codepage.h"
#include "util/codepage_p.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

namespace vyr {
namespace {

// Transcoders hold iconv descriptors, which are not safe to share between
// threads, so each thread keeps its own; no lock is needed.
class TranscoderCache
{
public:
    const Transcoder *byName(const std::string &name)
    {
        if (name == "UTF-8")
            return &utf8();
        if (name.empty())
            return nullptr;
        auto found = byName_.find(name);
        if (found == byName_.end()) {
            std::unique_ptr<Transcoder> made = makeSingleByteTranscoder(name);
            if (!made)
                made = makeIconvTranscoder(name);
            found = byName_.emplace(name, std::move(made)).first;
        }
        return found->second.get();
    }

    const Transcoder *byNumber(std::uint32_t codePage)
    {
        if (codePage == kUtf8CodePage)
            return &utf8();
        if (codePage == kAnsiCodePage) {
            const unsigned generation = narrowCodePageGeneration();
            if (!narrow_ || narrowGeneration_ != generation) {
                narrow_ = byName(narrowCodePageRef());
                narrowGeneration_ = generation;
            }
            return narrow_;
        }
        auto found = byNumber_.find(codePage);
        if (found == byNumber_.end())
            found = byNumber_.emplace(codePage, byName(codePageName(codePage))).first;
        return found->second;
    }

private:
    static const Transcoder &utf8()
    {
        static const std::unique_ptr<Transcoder> transcoder = makeUtf8Transcoder();
        return *transcoder;
    }

    std::unordered_map<std::string, std::unique_ptr<Transcoder>> byName_;
    std::unordered_map<std::uint32_t, const Transcoder *> byNumber_;
    const Transcoder *narrow_ = nullptr;
    unsigned narrowGeneration_ = 0;
};

} // namespace

std::size_t storeAsciiRun(std::u16string_view wide, char *out)
{
    using Units = unsigned short __attribute__((vector_size(16)));
    using Bytes = unsigned char __attribute__((vector_size(8)));
    std::size_t i = 0;
    for (; i + 8 <= wide.size(); i += 8) {
        Units units;
        std::memcpy(&units, wide.data() + i, sizeof units);
        std::uint64_t high[2];
        const Units above = units & static_cast<unsigned short>(0xFF80);
        std::memcpy(high, &above, sizeof high);
        if (high[0] | high[1])
            break;
        const Bytes bytes = __builtin_convertvector(units, Bytes);
        std::memcpy(out + i, &bytes, sizeof bytes);
    }
    for (; i < wide.size() && wide[i] < 0x80; ++i)
        out[i] = static_cast<char>(wide[i]);
    return i;
}

const Transcoder *transcoderFor(std::uint32_t codePage)
{
    thread_local TranscoderCache cache;
    return cache.byNumber(codePage);
}

} // namespace vyr
