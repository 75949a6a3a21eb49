#include "apps/scene/unique_names.h"

#include <cctype>

namespace viewer {

std::string pathSafeName(const std::string& name, const std::string& fallback) {
    std::string safe = name;
    for (char& c : safe)
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_' && c != '-') c = '_';
    return safe.empty() ? fallback : safe;
}

std::string uniqueName(const std::string& name, std::set<std::string>& taken) {
    std::string candidate = name;
    for (int suffix = 2; taken.count(candidate) != 0; ++suffix)
        candidate = name + "_" + std::to_string(suffix);
    taken.insert(candidate);
    return candidate;
}

}  // namespace viewer
