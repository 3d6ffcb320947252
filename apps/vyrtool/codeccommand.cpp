// vyrtool codec: runs one of the library's codec exports over standard input.
#include "commands.h"

#include "util/codepage.h"
#include "util/safefiles.h"
#include "vyrguimfc/vyrguimfc.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include <sys/stat.h>

namespace {

struct CodecExport
{
    std::string_view name;
    void (*run)(VYRStringHandle);
};

constexpr std::array<CodecExport, 4> kCodecs{{
    {"encode-user", [](VYRStringHandle text) { VYREncodeUserString(text); }},
    {"decode-user", VYRDecodeUserString},
    {"encode-wwjd", VYRWWJDEncode},
    {"decode-wwjd", VYRWWJDDecode},
}};

int usageError(const std::string &message)
{
    std::fprintf(stderr,
                 "vyrtool codec: %s\n"
                 "usage: vyrtool codec encode-user|decode-user|encode-wwjd|decode-wwjd [--codepage NAME]\n",
                 message.c_str());
    return 2;
}

// Standard input may be endless (/dev/zero, a pipe that never closes): no
// more is read than a file the programs would take.
enum class ReadResult { Whole, Failed, TooLarge };

ReadResult readAll(std::FILE *stream, std::string &bytes)
{
    // A file's size is known ahead: one buffer of that size, not a string
    // doubled as it grows.
    struct stat status
    {
    };
    if (::fstat(::fileno(stream), &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
        if (static_cast<std::uintmax_t>(status.st_size) > vyr::kLargestUntrustedFile)
            return ReadResult::TooLarge;
        bytes.reserve(static_cast<std::size_t>(status.st_size));
    }
    char buffer[65536];
    std::size_t got;
    while ((got = std::fread(buffer, 1, sizeof buffer, stream)) > 0) {
        if (bytes.size() + got > vyr::kLargestUntrustedFile)
            return ReadResult::TooLarge;
        bytes.append(buffer, got);
    }
    return std::ferror(stream) ? ReadResult::Failed : ReadResult::Whole;
}

} // namespace

int runCodecCommand(std::span<const std::string_view> arguments)
{
    const CodecExport *codec = nullptr;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--codepage") {
            if (i + 1 == arguments.size())
                return usageError("--codepage needs a code page name");
            const std::string_view name = arguments[++i];
            std::string refusal;
            const auto canonical = vyr::canonicalCodePageName(name, &refusal);
            if (!canonical)
                return usageError(refusal);
            // The library reads the narrow code page from here on first use.
            setenv("VYR_CODEPAGE", canonical->c_str(), 1);
            continue;
        }
        if (codec)
            return usageError("unexpected argument \"" + std::string(argument) + "\"");
        for (const CodecExport &candidate : kCodecs) {
            if (candidate.name == argument)
                codec = &candidate;
        }
        if (!codec)
            return usageError("unknown codec \"" + std::string(argument) + "\"");
    }
    if (!codec)
        return usageError("which codec?");

    const std::unique_ptr<VYRStringObject, void (*)(VYRStringHandle)> handle(VYR_StringCreate(), VYR_StringDestroy);
    if (!handle) {
        std::fputs("vyrtool codec: out of memory\n", stderr);
        return 1;
    }
    {
        // Gone before the codec runs: the handle holds the text from here on.
        std::string input;
        switch (readAll(stdin, input)) {
        case ReadResult::Whole: break;
        case ReadResult::Failed: std::perror("vyrtool codec: reading standard input"); return 2;
        case ReadResult::TooLarge:
            std::fprintf(stderr, "vyrtool codec: standard input is larger than %zu bytes, more than a text is\n",
                         vyr::kLargestUntrustedFile);
            return 2;
        }
        VYR_StringSetWithLength(handle.get(), input.data(), input.size());
    }
    codec->run(handle.get());
    const std::size_t length = VYR_StringLength(handle.get());
    if (std::fwrite(VYR_StringGet(handle.get()), 1, length, stdout) != length || std::fflush(stdout) != 0) {
        std::perror("vyrtool codec: writing standard output");
        return 1;
    }
    return 0;
}
