// Workspace files: any text gives a workspace or a reason, never a crash,
// and a path a workspace names is only read when it is a plain file.
#include "workspace.h"

#include "vyr/vyr_session.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static IVYRSession *session = VYR_SessionCreate();
    const std::string text(reinterpret_cast<const char *>(data), size);
    std::string error;
    // Relative paths resolve against the seed corpus's examples.
    const auto workspace =
        vyr::ftprops::Workspace::parse(text, VYR_FUZZ_EXAMPLES_DIR "/workspace.json", *session, error);
    if (!workspace && error.empty())
        std::abort();
    if (workspace) {
        for (const auto &featureType : workspace->featureTypes())
            (void)workspace->find(featureType.name());
    }
    return 0;
}
