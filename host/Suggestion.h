#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

/// "; did you mean CANDIDATE?" for the candidate that a mistyped word is nearest to, letter case
/// aside; "" when none is near. Near is its beginning, and one slip in three characters.
std::string DidYouMean(std::string_view word, const std::vector<std::string>& candidates);

}  // namespace host
