#pragma once
// A file's extension, which tells a scene file from an asset and one reader's
// habits from another's.

#include <cctype>
#include <string>

namespace viewer {

/// The text after the last '.' of the file's name, in lower case; empty when there is none.
inline std::string lowerCaseExtension(const std::string& path) {
    const std::size_t dot = path.rfind('.');
    const std::size_t slash = path.rfind('/');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return "";
    std::string extension = path.substr(dot + 1);
    for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return extension;
}

}  // namespace viewer
