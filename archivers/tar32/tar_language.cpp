#include "archivers/tar32/tar_language.h"

#include "archivers/tar32/tar_parser.h"
#include "archivers/tar32/tar_texts.h"

namespace archiver {

std::variant<Command, ReturnCode> parseTar(std::string_view line, const TextCodec& codec) {
    tar::Parser parser(line, codec);
    const ReturnCode code = parser.parse();
    if (code != kOk) return code;
    return parser.take();
}

constexpr CommandLanguage kTarLanguage{.parse = &parseTar, .texts = &tarTexts};

}  // namespace archiver
