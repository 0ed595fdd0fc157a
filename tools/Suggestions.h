#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace laminate::cli {

/// How many bytes have to be inserted, deleted or replaced to make one text of the other.
std::size_t EditDistance(std::string_view a, std::string_view b);

/// Whether a caller's word is this name of a design: as its bytes, or in UTF-8.
bool Means(std::string_view sGiven, std::string_view sName);

/// "; did you mean 'a', 'b' or 'c'?" with the up to three names of a design, in UTF-8, that are closest to one that
/// does not exist, the closest first and equally close ones in their own order. Empty when there are no names.
std::string DidYouMean(std::string_view sWanted, const std::vector<std::string>& names);

}  // namespace laminate::cli
