// Feature files on any bytes: the loader refuses what is not a feature file
// with a message and never crashes; what it accepts saves and loads back to
// the same file.
#include "stringobjects/vyrrwstringimp.h"

#include "vyr/vyr_featurefile.h"
#include "vyr/vyr_session.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

namespace {

std::string slurp(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static IVYRSession *session = VYR_SessionCreate();
    static const std::string first = "/tmp/vyr-fuzz-feature-" + std::to_string(::getpid()) + "-a.json";
    static const std::string second = "/tmp/vyr-fuzz-feature-" + std::to_string(::getpid()) + "-b.json";
    IVYRFeature *feature = session->createFeature();
    VYRRWStringImp error;
    if (VYR_FeatureReadJson(feature, reinterpret_cast<const char *>(data), size, "fuzz", &error)) {
        IVYRFeature *copy = session->createFeature();
        if (!VYR_FeatureSaveJson(feature, first.c_str(), &error) || !VYR_FeatureLoadJson(copy, first.c_str(), &error)
            || !VYR_FeatureSaveJson(copy, second.c_str(), &error) || slurp(first) != slurp(second))
            std::abort();
        session->destroyFeature(copy);
    } else if (error.length() == 0) {
        std::abort(); // a refusal always says why
    }
    session->destroyFeature(feature);
    return 0;
}
