#include "host/console/extract_report.h"

#include <algorithm>

#include "host/console/json_text.h"

namespace tovar::host {
namespace {

template <class Use>
void forEachLine(std::wstring_view text, Use use) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(L'\n'), text.size());
        std::wstring_view line = text.substr(0, end);
        while (line.ends_with(L'\r')) line.remove_suffix(1);
        use(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

/// @param key  of the folder; without one it is left out
void append(std::string& out, std::wstring_view archive, std::string_view key, std::wstring_view folder,
            const ExtractResult& result, bool json) {
    if (!json) {
        forEachLine(result.text, [&out](std::wstring_view line) {
            appendPrintable(out, line);
            out += '\n';
        });
        if (result.cut) out += "[More...]\n";
        return;
    }
    out += "{\"archive\":";
    appendJson(out, archive);
    if (!key.empty()) {
        (((out += ',') += '"') += key) += "\":";
        appendJson(out, folder);
    }
    out += result.failed || result.nothingChosen ? ",\"good\":false" : ",\"good\":true";
    out += ",\"code\":" + std::to_string(result.code) + ",\"message\":";
    appendJson(out, result.message);
    out += ",\"output\":[";
    bool first = true;
    forEachLine(result.text, [&](std::wstring_view line) {
        if (!first) out += ',';
        first = false;
        appendJson(out, line);
    });
    out += result.cut ? "],\"cut\":true}\n" : "],\"cut\":false}\n";
}

}  // namespace

void appendResult(std::string& out, std::wstring_view archive, std::wstring_view folder, const ExtractResult& result,
                  bool json) {
    append(out, archive, "to", folder, result, json);
}

void appendChange(std::string& out, std::wstring_view archive, std::wstring_view folder, const ExtractResult& result,
                  bool json) {
    append(out, archive, folder.empty() ? "" : "from", folder, result, json);
}

}  // namespace tovar::host
