#pragma once
// vrt::Path: the path of a prim on a stage, such as "/World/Lights/Key".

#include <cstddef>
#include <string>

namespace vrt {

class Path {
public:
    Path() = default;
    /// Taken as it comes: no normalisation.
    explicit Path(std::string text) : text_(std::move(text)) {}

    /// The path of the stage's root, "/".
    static const Path& AbsoluteRootPath();

    /// One element up; the root's parent is the root itself.
    Path parent() const;
    /// The last element ("Key" of "/World/Key"); empty for the root.
    std::string name() const;
    /// The whole path with its leading '/'.
    const std::string& string() const { return text_; }

    bool operator==(const Path& other) const { return text_ == other.text_; }
    bool operator!=(const Path& other) const { return text_ != other.text_; }
    std::size_t hash() const { return std::hash<std::string>()(text_); }

private:
    std::string text_;
};

}  // namespace vrt
