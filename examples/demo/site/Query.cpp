#include "Query.h"

#include <Poco/Exception.h>
#include <Poco/StringTokenizer.h>
#include <Poco/URI.h>

#include <algorithm>

std::string percentDecoded(const std::string& text) {
    try {
        std::string decoded;
        Poco::URI::decode(text, decoded);
        return decoded;
    } catch (const Poco::SyntaxException&) {
        return text;
    }
}

Query parseQuery(const std::string& rawQuery) {
    Query query;
    for (const auto& pair : Poco::StringTokenizer(rawQuery, "&")) {
        const auto equals = std::min(pair.find('='), pair.size());
        if (equals == 0)
            continue;
        const auto value = equals < pair.size() ? pair.substr(equals + 1) : std::string();
        query.emplace_back(percentDecoded(pair.substr(0, equals)), percentDecoded(value));
    }
    return query;
}

std::string findInQuery(const Query& query, std::string_view name) {
    const auto pair = std::ranges::find(query.rbegin(), query.rend(), name, &Query::value_type::first);
    return pair == query.rend() ? std::string() : pair->second;
}

bool queryHas(const Query& query, std::string_view name) {
    return std::ranges::find(query, name, &Query::value_type::first) != query.end();
}
