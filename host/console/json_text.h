#pragma once
#include <string>
#include <string_view>

namespace tovar::host {

/// Appends a text as a JSON string in UTF-8, quotes included. What is no character becomes U+FFFD.
/// Source: RFC 8259
void appendJson(std::string& out, std::wstring_view text);

/// Appends a text in UTF-8; what is no character becomes U+FFFD.
void appendUtf8(std::string& out, std::wstring_view text);

/// Appends a text for people likewise. Control characters become "?": a terminal would take them for its orders, and a
/// line end in a member's name would make a line of its own.
void appendPrintable(std::string& out, std::wstring_view text);

}  // namespace tovar::host
