#pragma once

#include "foundation/Dictionary.h"

#include <optional>
#include <string>

#import <Foundation/Foundation.h>

namespace vok {

/// Never nil: bytes that are not UTF-8 are taken for Latin-1.
NSString* toNSString(const std::string& text);

/// `text` as it stands but for characters that no URL holds, which are escaped. Not by URLWithString:, which
/// from macOS 14 on escapes every "%" again when there is one such character, and before gives nil.
NSURL* toNSURL(const std::string& text);

/// Any object as "%@" shows it: a string as it stands, 1 and 0 for booleans, "(null)" for nil.
std::string toText(id object);

/// Nothing for nil.
std::optional<std::string> toOptionalText(NSString* string);

/// Every value as its text.
Dictionary toDictionary(NSDictionary* dictionary);

}  // namespace vok
