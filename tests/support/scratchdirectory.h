// A fresh directory for one test, removed with everything in it afterwards.
#ifndef VYR_TESTS_SCRATCHDIRECTORY_H
#define VYR_TESTS_SCRATCHDIRECTORY_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace vyr::test {

class ScratchDirectory
{
public:
    ScratchDirectory()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "vyr-test-XXXXXX").string();
        m_path = ::mkdtemp(pattern.data()) ? pattern : std::string();
    }
    ~ScratchDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    ScratchDirectory(const ScratchDirectory &) = delete;
    ScratchDirectory &operator=(const ScratchDirectory &) = delete;

    // No trailing "/".
    const std::string &path() const { return m_path; }

    // Writes `content` to `relative`, making the folders on the way.
    std::string write(const std::string &relative, const std::string &content) const
    {
        const std::filesystem::path file = std::filesystem::path(m_path) / relative;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file.string();
    }

    std::string read(const std::string &relative) const
    {
        std::ifstream file(std::filesystem::path(m_path) / relative, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }

private:
    std::string m_path;
};

} // namespace vyr::test

#endif // VYR_TESTS_SCRATCHDIRECTORY_H
