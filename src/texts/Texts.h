#pragma once

#include <string>
#include <string_view>

namespace vok {

/// A translatable string, in English. Published strings, such as the sheet title "Error", are not.
struct Text {
    explicit constexpr Text(const char* text) : english(text) {}
    const char* english;
};

/// The program's own strings. `po/` has their translations; xgettext finds them by
/// the name of the class.
namespace texts {

inline constexpr auto ok = Text("OK");
inline constexpr auto cancel = Text("Cancel");
// TRANSLATORS: An item of a menu, and a button; loads the page again.
inline constexpr auto reload = Text("Reload");

// The page in place of one that could not be loaded.

inline constexpr auto pageNotLoaded = Text("This page could not be loaded");
// TRANSLATORS: A title. %@ is a host name, such as "www.example.com".
inline constexpr auto hostNotLoaded = Text("The page at %@ could not be loaded");
inline constexpr auto tryAgainAdvice = Text("Check your network connection and try again.");
// TRANSLATORS: "First page" is the first page of the installation.
inline constexpr auto startAgainAdvice = Text("Start again from the first page.");
inline constexpr auto contactAdvice =
    Text("If the problem persists, contact the provider of this installer.");
// TRANSLATORS: A button that loads the same page again.
inline constexpr auto tryAgain = Text("Try again");
// TRANSLATORS: A button that leads to the first page of the installation.
inline constexpr auto startAgain = Text("Start again");
// TRANSLATORS: The label of a part of the page that is folded away.
inline constexpr auto details = Text("Details");
// TRANSLATORS: The label of the address (URL) of a web page.
inline constexpr auto address = Text("Address");
inline constexpr auto reason = Text("Reason");
// TRANSLATORS: The label of a command that shows the program's log.
inline constexpr auto log = Text("Log");

// Why a page could not be loaded.

inline constexpr auto hostNotFound = Text("The server could not be found.");
inline constexpr auto connectionRefused = Text("The server refused the connection.");
inline constexpr auto serverUnreachable = Text("The server cannot be reached.");
inline constexpr auto noAnswer = Text("The server does not answer.");
inline constexpr auto noPage = Text("The server sent no page.");
inline constexpr auto connectionClosed = Text("The server closed the connection too early.");
inline constexpr auto tooManyRedirects = Text("The server redirects too many times.");
inline constexpr auto certificateNotTrusted = Text("The server's certificate is not trusted.");
inline constexpr auto secureConnectionFailed = Text("A secure connection could not be established.");
// TRANSLATORS: %@ is a number and its meaning in English, such as "404 Not Found".
inline constexpr auto serverError = Text("The server reported an error: %@.");
inline constexpr auto passwordRequired = Text("The server requires a user name and a password.");
inline constexpr auto fileNotFound = Text("The file does not exist.");
inline constexpr auto addressNotAllowed = Text("This address is not allowed.");
// TRANSLATORS: An address such as "tel:12345", which is not that of a page.
inline constexpr auto addressNotSupported = Text("This kind of address cannot be opened here.");
// TRANSLATORS: %@ is a MIME type, such as "application/zip".
inline constexpr auto typeNotSupported = Text("Files of type %@ cannot be opened here.");
inline constexpr auto isDownload = Text("This link is a download and cannot be opened here.");

// Sheets.

inline constexpr auto pageCrashed =
    Text("The page cannot be displayed.\nClose the installer and start it again.");
inline constexpr auto fileOfThisWindow =
    Text("This file cannot be opened: the default browser cannot fetch it from outside this window.");
// TRANSLATORS: A page asks this when its window is closed; the buttons are "Stay" and "Leave".
inline constexpr auto leaveQuestion = Text("Leave this page? What you have begun here may be lost.");
inline constexpr auto stay = Text("Stay");
inline constexpr auto leave = Text("Leave");
// TRANSLATORS: A command is an action that a page requests, such as an installation. The buttons are
// "Cancel" and "Reload".
inline constexpr auto runAgainQuestion = Text("Reload this page? Its command will run again.");
inline constexpr auto signInTitle = Text("Authentication required");
// TRANSLATORS: %@ is a host name.
inline constexpr auto serverSignIn = Text("%@ requires a user name and a password.");
// TRANSLATORS: %@ is the host name of the network's proxy server.
inline constexpr auto proxySignIn = Text("The proxy server %@ requires a user name and a password.");
inline constexpr auto signInFailed = Text("The user name or the password is incorrect.");
inline constexpr auto userName = Text("User name");
inline constexpr auto password = Text("Password");
inline constexpr auto signIn = Text("Sign in");

// The sheet of a program whose web view cannot start.

inline constexpr auto sandboxBlocked =
    Text("The web view cannot start: this system blocks the user namespaces that its sandbox needs.");
// TRANSLATORS: "Them" are the user namespaces, a feature of the Linux kernel. %@ is a shell command.
inline constexpr auto allowByCommand = Text("Ask your administrator to allow them with this command:\n%@");
// TRANSLATORS: The same; %@ is a shell command.
inline constexpr auto allowByProfile = Text(
    "Ask your administrator to install an AppArmor profile that allows them for this program, or to allow "
    "them for all programs with this command:\n%@");
inline constexpr auto allowSomehow = Text("Ask your administrator to allow them for this program.");

// TRANSLATORS: Translate to "default:RTL" if your language is written from right to left, else leave it as it
// is. It is never shown.
inline constexpr auto direction = Text("default:LTR");

}  // namespace texts

/// Sets the language of the strings by a BCP 47 code: the translation for exactly that code, else one of the
/// same language ("de" for "de-AT"), else English. Traditional Chinese does not fall back to Simplified
/// Chinese. Applies to the whole program; call it on the main thread.
void useLanguage(std::string_view code);

/// Whether `code` has only letters, digits, hyphens and underscores.
bool isLanguageCode(std::string_view code);

/// BCP 47 code of the language in use, such as "pt-BR".
std::string languageInUse();
bool isRightToLeft();

/// `text` in the language in use. Placeholders are those of StringWithFormat, at most one in each string.
std::string translated(Text text);

}  // namespace vok
