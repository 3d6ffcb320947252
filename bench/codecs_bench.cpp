// The WWJD and user-string codecs against percent-encoding (a codec of the
// same kind that Qt ships) and memcpy, on a large mixed text and on many
// short strings. The large runs also report "memory/input": the input plus
// the most heap memory the call held at once (its result included), over
// the input's size.
//
// The "undecodable" rows give the multi-byte code pages bytes they cannot
// decode, where conversion stops at every byte; each runs at 64 KiB and at
// 1 MiB, and a guard fails the run when the larger costs clearly more per
// byte.
#include "allocationmeter.h"
#include "ratioreporter.h"

#include "util/codepage.h"
#include "util/tokencodec.h"
#include "util/usercodec.h"
#include "vyrguimfc/vyrguimfc.h"

#include <QByteArray>
#include <QUrl>

#include <cstring>
#include <random>

namespace {

constexpr std::size_t kLarge = 1 << 20;
constexpr std::size_t kShort = 16;
constexpr std::size_t kShortCount = 4096;

// Mostly ASCII words, some characters that become tokens, some accented
// letters (two bytes each in UTF-8, one in CP1252).
std::string mixedText(std::size_t size, bool utf8, unsigned seed)
{
    static const char *const kAccentedUtf8[] = {"\xC3\xA9", "\xC3\xBC", "\xC3\x9F", "\xE2\x82\xAC"};
    static const char *const kAccentedCp1252[] = {"\xE9", "\xFC", "\xDF", "\x80"};
    static const char kTokens[] = " , ()<>/\"";
    std::mt19937 random(seed);
    std::string text;
    while (text.size() < size) {
        const unsigned roll = random() % 100;
        if (roll < 4)
            text += (utf8 ? kAccentedUtf8 : kAccentedCp1252)[random() % 4];
        else if (roll < 14)
            text += kTokens[random() % (sizeof kTokens - 1)];
        else
            text += static_cast<char>("abcdefghijklmnopqrstuvwxyz_0123456789"[random() % 37]);
    }
    text.resize(size);
    if (utf8) { // do not end inside a character
        while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0) == 0x80)
            text.pop_back();
        if (!text.empty() && static_cast<unsigned char>(text.back()) >= 0xC0)
            text.pop_back();
    }
    return text;
}

std::vector<std::string> shortTexts(bool utf8)
{
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < kShortCount; ++i)
        texts.push_back(mixedText(kShort, utf8, static_cast<unsigned>(i)));
    return texts;
}

void setCodePage(benchmark::State &state, const char *codePage)
{
    if (!vyr::setNarrowCodePage(codePage))
        state.SkipWithError("code page not available");
}

std::size_t sizeOf(const std::string &input)
{
    return input.size();
}

std::size_t sizeOf(const QByteArray &input)
{
    return static_cast<std::size_t>(input.size());
}

// `given` is the text to work on; empty, a mixed text of 1 MiB.
template <typename Work>
void registerLarge(const std::string &name, const char *codePage, Work work, std::string given = {})
{
    benchmark::RegisterBenchmark(name.c_str(), [codePage, work, given](benchmark::State &state) {
        setCodePage(state, codePage);
        const std::string text = given.empty() ? mixedText(kLarge, std::strcmp(codePage, "UTF-8") == 0, 1) : given;
        const auto input = work.prepare(text);
        for (auto _ : state)
            benchmark::DoNotOptimize(work.run(input));
        state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
        const double inputSize = static_cast<double>(sizeOf(input));
        std::size_t peak = 0;
        if constexpr (requires { work.peak(input); })
            peak = work.peak(input);
        else
            peak = vyr::bench::peakAllocatedBy([&] { benchmark::DoNotOptimize(work.run(input)); });
        state.counters["memory/input"] = (inputSize + static_cast<double>(peak)) / inputSize;
    })->Unit(benchmark::kMicrosecond);
}

template <typename Work>
void registerShort(const std::string &name, const char *codePage, Work work)
{
    benchmark::RegisterBenchmark(name.c_str(), [codePage, work](benchmark::State &state) {
        setCodePage(state, codePage);
        std::vector<decltype(work.prepare(std::string()))> inputs;
        for (const std::string &text : shortTexts(std::strcmp(codePage, "UTF-8") == 0))
            inputs.push_back(work.prepare(text));
        std::size_t i = 0;
        for (auto _ : state) {
            benchmark::DoNotOptimize(work.run(inputs[i]));
            i = (i + 1) % inputs.size();
        }
        state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kShort));
    });
}

struct EncodeWWJD
{
    std::string prepare(const std::string &text) const { return text; }
    std::string run(const std::string &input) const { return vyr::encodeWWJD(input); }
};

struct DecodeWWJD
{
    std::string prepare(const std::string &text) const { return vyr::encodeWWJD(text); }
    std::string run(const std::string &input) const { return vyr::decodeWWJD(input); }
};

struct EncodeUser
{
    std::string prepare(const std::string &text) const { return text; }
    std::string run(const std::string &input) const { return vyr::encodeUserString(input); }
};

struct DecodeUser
{
    std::string prepare(const std::string &text) const { return vyr::encodeUserString(text); }
    std::string run(const std::string &input) const { return vyr::decodeUserString(input); }
};

// Through the export, as a host calls it: the handle holds the input and
// gets the result, which it copies from the codec's.
struct EncodeWWJDExport
{
    std::string prepare(const std::string &text) const { return text; }
    std::size_t run(const std::string &input) const
    {
        VYRStringHandle handle = VYR_StringCreate();
        VYR_StringSetWithLength(handle, input.data(), input.size());
        VYRWWJDEncode(handle);
        const std::size_t length = VYR_StringLength(handle);
        VYR_StringDestroy(handle);
        return length;
    }
    // The handle's text is the input: only the export's call is metered.
    std::size_t peak(const std::string &input) const
    {
        VYRStringHandle handle = VYR_StringCreate();
        VYR_StringSetWithLength(handle, input.data(), input.size());
        const std::size_t peak = vyr::bench::peakAllocatedBy([&] { VYRWWJDEncode(handle); });
        VYR_StringDestroy(handle);
        return peak;
    }
};

struct PercentEncode
{
    QByteArray prepare(const std::string &text) const { return QByteArray::fromStdString(text); }
    QByteArray run(const QByteArray &input) const { return QUrl::toPercentEncoding(QString::fromLatin1(input)); }
};

// The peer works on the same bytes: Latin-1 through QString and back, so
// the conversion the WWJD codec makes to UTF-16 has its counterpart.
struct PercentDecode
{
    QByteArray prepare(const std::string &text) const
    {
        return QUrl::toPercentEncoding(QString::fromLatin1(QByteArray::fromStdString(text)));
    }
    QString run(const QByteArray &input) const { return QString::fromLatin1(QByteArray::fromPercentEncoding(input)); }
};

struct MemoryCopy
{
    std::string prepare(const std::string &text) const { return text; }
    std::string run(const std::string &input) const
    {
        std::string copy(input.size(), '\0');
        std::memcpy(copy.data(), input.data(), input.size());
        return copy;
    }
};

} // namespace

int main(int argc, char **argv)
{
    std::vector<vyr::bench::PeerPair> pairs;
    for (const char *codePage : {"CP1252", "UTF-8"}) {
        const std::string cp = codePage;
        registerLarge("encodeWWJD/1MiB/" + cp, codePage, EncodeWWJD{});
        registerLarge("decodeWWJD/1MiB/" + cp, codePage, DecodeWWJD{});
        registerLarge("encodeUserString/1MiB/" + cp, codePage, EncodeUser{});
        registerLarge("decodeUserString/1MiB/" + cp, codePage, DecodeUser{});
        registerShort("encodeWWJD/16B/" + cp, codePage, EncodeWWJD{});
        registerShort("decodeWWJD/16B/" + cp, codePage, DecodeWWJD{});
        registerLarge("peer:toPercentEncoding/1MiB/" + cp, codePage, PercentEncode{});
        registerLarge("peer:fromPercentEncoding/1MiB/" + cp, codePage, PercentDecode{});
        registerShort("peer:toPercentEncoding/16B/" + cp, codePage, PercentEncode{});
        registerShort("peer:fromPercentEncoding/16B/" + cp, codePage, PercentDecode{});
        for (const char *size : {"1MiB", "16B"}) {
            pairs.push_back({"encodeWWJD/" + std::string(size) + "/" + cp,
                             "peer:toPercentEncoding/" + std::string(size) + "/" + cp});
            pairs.push_back({"decodeWWJD/" + std::string(size) + "/" + cp,
                             "peer:fromPercentEncoding/" + std::string(size) + "/" + cp});
        }
        pairs.push_back({"encodeWWJD/1MiB/" + cp, "peer:memcpy/1MiB"});
    }
    registerLarge("peer:memcpy/1MiB", "CP1252", MemoryCopy{});
    // The library keeps its own narrow code page, read from the environment.
    registerLarge("VYRWWJDEncode/1MiB", "UTF-8", EncodeWWJDExport{});

    std::vector<vyr::bench::GrowthGuard> guards;
    constexpr std::size_t kUndecodableSmall = kLarge / 16;
    registerLarge("peer:toPercentEncoding/1MiB-undecodable", "CP1252", PercentEncode{}, std::string(kLarge, '\xFF'));
    for (const char *codePage : {"CP932", "EUC-JP", "GB18030"}) {
        const std::string cp = codePage;
        for (const auto &[stem, size] : {std::pair{"64KiB", kUndecodableSmall}, std::pair{"1MiB", kLarge}}) {
            const std::string text(size, '\xFF');
            registerLarge("encodeWWJD/" + std::string(stem) + "-undecodable/" + cp, codePage, EncodeWWJD{}, text);
            registerLarge("decodeWWJD/" + std::string(stem) + "-undecodable/" + cp, codePage, DecodeWWJD{}, text);
        }
        for (const char *codec : {"encodeWWJD/", "decodeWWJD/"}) {
            guards.push_back({codec + std::string("64KiB-undecodable/") + cp,
                              codec + std::string("1MiB-undecodable/") + cp,
                              static_cast<double>(kLarge / kUndecodableSmall)});
        }
        pairs.push_back({"encodeWWJD/1MiB-undecodable/" + cp, "peer:toPercentEncoding/1MiB-undecodable"});
    }
    return vyr::bench::runBenchmarks(argc, argv, std::move(pairs), std::move(guards));
}
