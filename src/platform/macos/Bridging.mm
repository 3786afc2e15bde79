#include "platform/macos/Bridging.h"

#include "platform/macos/CocoaCalls.h"

namespace vok {

namespace {

NSString* decoded(const std::string& text, NSStringEncoding encoding) {
    return [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:encoding];
}

}  // namespace

Exception exceptionFrom(NSException* exception) {
    const bool invalidArgument = [exception.name isEqualToString:NSInvalidArgumentException];
    return {invalidArgument ? ExceptionKind::NSInvalidArgumentException : ExceptionKind::NSGenericException,
            toText(exception.reason)};
}

NSString* toNSString(const std::string& text) {
    NSString* const string = decoded(text, NSUTF8StringEncoding);
    return string ? string : decoded(text, NSISOLatin1StringEncoding);
}

NSURL* toNSURL(const std::string& text) {
    NSData* const bytes = [NSData dataWithBytes:text.data() length:text.size()];
    return [NSURL URLWithDataRepresentation:bytes relativeToURL:nil];
}

std::string toText(id object) {
    NSString* const string = [NSString stringWithFormat:@"%@", object];
    const char* const text = string.UTF8String;
    return text ? std::string(text, [string lengthOfBytesUsingEncoding:NSUTF8StringEncoding]) : std::string();
}

std::optional<std::string> toOptionalText(NSString* string) {
    return string ? std::optional(toText(string)) : std::nullopt;
}

Dictionary toDictionary(NSDictionary* dictionary) {
    Dictionary texts;
    for (id key in dictionary)
        texts.insert_or_assign(toText(key), toText([dictionary objectForKey:key]));
    return texts;
}

}  // namespace vok
