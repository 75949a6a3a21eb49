#pragma once
// Names an asset gives its objects and lights may be empty, repeated or full of
// characters a location path cannot hold; these make them usable.

#include <set>
#include <string>

namespace viewer {

/// `name` with every character other than a letter, a digit, '_' or '-'
/// replaced by '_'; `fallback` when nothing is left.
std::string pathSafeName(const std::string& name, const std::string& fallback);

/// `name`, or `name_2`, `name_3`, ... whichever is not yet in `taken`; the
/// result is added to `taken`.
std::string uniqueName(const std::string& name, std::set<std::string>& taken);

}  // namespace viewer
