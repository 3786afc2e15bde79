#include "Journal.h"

#include <algorithm>
#include <iomanip>
#include <iostream>

void Journal::write(std::string_view kind, std::string text) {
    std::ranges::replace_if(
        text, [](unsigned char character) { return character < ' ' || character == 0x7f; }, ' ');
    text.erase(text.find_last_not_of(' ') + 1);
    const std::scoped_lock lock(mutex);
    std::cout << std::left << std::setw(9) << kind << ' ' << text << std::endl;
}

std::string queryText(const Query& query, std::initializer_list<std::string_view> without) {
    std::string text;
    for (const auto& [name, value] : query) {
        if (std::ranges::find(without, name) == without.end()) {
            text += text.empty() ? "" : " ";
            text += name;
            text += '=';
            text += value;
        }
    }
    return text;
}
