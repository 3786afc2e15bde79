#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The pairs of a URL's query in their order, with names and values percent-decoded.
using Query = std::vector<std::pair<std::string, std::string>>;

/// Parses a raw query. "+" stays "+"; a string with a malformed escape is not decoded; a pair without a name
/// is dropped.
Query parseQuery(const std::string& rawQuery);

/// Value of the last pair of that name, empty when there is none.
std::string findInQuery(const Query& query, std::string_view name);

/// Whether a pair of that name exists.
bool queryHas(const Query& query, std::string_view name);

/// The text with its percent escapes decoded, or unchanged when one of them is malformed.
std::string percentDecoded(const std::string& text);
