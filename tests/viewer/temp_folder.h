#pragma once
// A folder of its own for each test, made with mkdtemp and removed with what
// it holds when the test ends.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace viewer_testing {

class TempFolder {
public:
    TempFolder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "beamwright_viewer_XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) std::abort();
        path_ = pattern;
    }
    ~TempFolder() { std::filesystem::remove_all(path_); }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& path() const { return path_; }
    /// Writes `text` to `name` in the folder; returns the file's path.
    std::string write(const std::string& name, const std::string& text) const {
        const std::string file = path_ + "/" + name;
        std::ofstream(file) << text;
        return file;
    }

private:
    std::string path_;
};

}  // namespace viewer_testing
