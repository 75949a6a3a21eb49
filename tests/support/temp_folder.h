#pragma once
// A temporary folder of its own for each test, so that suites can run side by side.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace testing_support {

/// Made with mkdtemp; removed with what it holds when the object goes.
class TempFolder {
public:
    TempFolder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "beamwright-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) ADD_FAILURE() << "no temporary folder";
        path_ = pattern;
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& path() const { return path_; }
    /// Writes `text` to the file `name` in the folder; returns its path.
    std::string write(const std::string& name, const std::string& text) const {
        const std::string file = path_ + "/" + name;
        std::ofstream(file) << text;
        return file;
    }

private:
    std::string path_;
};

/// What the file at `path` holds; empty when it cannot be read.
inline std::string contentOf(const std::string& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace testing_support
