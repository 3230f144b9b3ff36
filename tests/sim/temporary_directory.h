// A directory of a test's own, gone with all that is in it when the test ends.
#ifndef TESTS_SIM_TEMPORARY_DIRECTORY_H
#define TESTS_SIM_TEMPORARY_DIRECTORY_H

#include <cstdlib>
#include <filesystem>
#include <string>

class TemporaryDirectory {
public:
    TemporaryDirectory()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "terminal-XXXXXX").string();
        name = mkdtemp(pattern.data());
    }
    ~TemporaryDirectory()
    {
        std::error_code ignored;
        std::filesystem::permissions(name, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(name, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::string file(const std::string& fileName) const { return name + "/" + fileName; }

    std::string name;
};

#endif
