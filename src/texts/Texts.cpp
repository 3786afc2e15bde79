#include "texts/Texts.h"

#include "texts/Catalogue.h"

#include <Poco/Ascii.h>
#include <Poco/String.h>

#include <algorithm>
#include <array>

namespace vok {

namespace {

const Catalogue* current = nullptr;  // null: English

std::string normalised(std::string_view code) {
    return Poco::toLower(Poco::replace(std::string(code), "_", "-"));
}

std::string primarySubtag(const std::string& code) { return code.substr(0, code.find('-')); }

bool isTraditionalChinese(const std::string& code) {
    constexpr auto subtags = std::to_array({"-hant", "-tw", "-hk", "-mo"});
    return code.starts_with("zh") && code.find("-hans") == code.npos &&
           std::any_of(subtags.begin(), subtags.end(),
                       [&](const char* subtag) { return code.find(subtag) != code.npos; });
}

/// The catalogue for the code `wanted`, else one of the same language, else null.
const Catalogue* catalogueFor(const std::string& wanted) {
    const Catalogue* similar = nullptr;
    for (const auto& catalogue : catalogues) {
        const auto language = normalised(catalogue.language);
        if (language == wanted)
            return &catalogue;
        if (primarySubtag(language) == primarySubtag(wanted))
            similar = &catalogue;
    }
    return isTraditionalChinese(wanted) ? nullptr : similar;
}

}  // namespace

void useLanguage(std::string_view code) { current = catalogueFor(normalised(code)); }

bool isLanguageCode(std::string_view code) {
    return !code.empty() && std::all_of(code.begin(), code.end(), [](char character) {
        return Poco::Ascii::isAlphaNumeric(character) || character == '-' || character == '_';
    });
}

std::string languageInUse() {
    return current ? Poco::replace(std::string(current->language), "_", "-") : "en";
}

bool isRightToLeft() { return translated(texts::direction) == "default:RTL"; }

std::string translated(Text text) {
    if (!current)
        return text.english;
    for (const auto& [english, translation] : current->translations) {
        if (english == text.english)
            return std::string(translation);
    }
    return text.english;
}

}  // namespace vok
