#include "formatregistry.h"

#include "util/capabilityfile.h"
#include "util/capabilityvalues.h"
#include "util/listpacking.h"

#include <algorithm>
#include <filesystem>
#include <unordered_map>

namespace vyr::engine {

FormatRegistry::FormatRegistry(const std::string &folder)
{
    std::error_code error;
    std::vector<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::directory_iterator(folder, error)) {
        if (entry.path().extension() == ".fmt")
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    for (const auto &file : files) {
        const auto capabilities = readCapabilityFile(file.string());
        if (!capabilities)
            continue;
        std::unordered_map<std::string, std::string> values;
        const StringList elements = csvSplit(*capabilities, ',');
        for (std::size_t i = 0; i + 1 < elements.size(); i += 2)
            values[elements[i]] = elements[i + 1];
        const std::string name = values["FORMAT"];
        if (name.empty() || m_formats.contains(name))
            continue;
        FormatEntry entry{name, values["FORMAT_TYPE"].empty() ? "FILE" : values["FORMAT_TYPE"], true, file.string()};
        // As the format record reads it, so that both agree on a role.
        if (const std::optional<bool> source = capabilityFlag(values["SOURCE"]))
            entry.isSource = *source;
        m_formats.emplace(name, std::move(entry));
    }
}

const FormatEntry *FormatRegistry::find(const std::string &name) const
{
    const auto found = m_formats.find(name);
    return found == m_formats.end() ? nullptr : &found->second;
}

std::vector<std::string> FormatRegistry::properties(const FormatEntry &entry) const
{
    return {"FORMAT_NAME",     entry.name,          "FORMAT_TYPE",
            entry.type,        "FORMAT_ROLE",       entry.isSource ? "READER" : "WRITER",
            "CAPABILITY_FILE", entry.capabilityFile};
}

} // namespace vyr::engine
