#pragma once

#include "foundation/Dictionary.h"

#include <optional>
#include <string>

#import <Foundation/Foundation.h>

namespace vok {

/// Never nil: bytes that are not UTF-8 are read as Latin-1.
NSString* toNSString(const std::string& text);

/// `text` with only those characters escaped that are invalid in a URL. URLWithString: would return nil for
/// them or, from macOS 14 on, also escape every "%" again.
NSURL* toNSURL(const std::string& text);

/// Any object as "%@" formats it: a string unchanged, 1 and 0 for booleans, "(null)" for nil.
std::string toText(id object);

/// Nothing for nil.
std::optional<std::string> toOptionalText(NSString* string);

/// Every value is converted by `toText`.
Dictionary toDictionary(NSDictionary* dictionary);

}  // namespace vok
