#pragma once
#include <windows.h>

#include <oleauto.h>

#include <string>
#include <vector>

#include "front/win32/com_support.h"

namespace tovar {

/// Names of files or members, as callers have them: one text, with a name on each line; an array of texts, of whatever
/// its elements are; an object with "length" and numbered elements, as JScript's arrays are; a collection that "For
/// Each" goes through. Elements that are objects are taken by their default value, so that entries of an archive will
/// do.
/// @param text  becomes the names, CR LF between them; lines without anything are left out
/// @return DISP_E_TYPEMISMATCH for anything else, also for an element that is no text, and for one of several lines;
///         E_INVALIDARG for an array or a collection without elements: none must not become all;
///         DISP_E_OVERFLOW for an array of more than 16,777,216 elements; what the object fails with
[[nodiscard]] HRESULT readNames(const VARIANT& argument, LCID locale, UniqueBstr& text);

/// The names of such a text.
[[nodiscard]] std::vector<std::wstring> namesOf(BSTR text);

}  // namespace tovar
