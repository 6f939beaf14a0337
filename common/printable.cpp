#include "common/printable.h"

#include "common/string_printf.h"

namespace quill {
namespace {

// One character of a text. `length` is 1 for a byte that is not UTF-8.
struct Character {
    std::size_t length;
    bool is_valid;
    char32_t code;
};

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// How many bytes a first byte announces; 0: it is none.
std::size_t announcedLength(unsigned char first) {
    if (first < 0x80) return 1;
    if (first < 0xC2) return 0;
    if (first < 0xE0) return 2;
    if (first < 0xF0) return 3;
    return first < 0xF5 ? 4 : 0;
}

// Neither a longer form than necessary, nor half of a surrogate pair, nor beyond Unicode.
bool isCharacter(char32_t code, std::size_t length) {
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    return code >= kLeast[length] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

// needs: a text that is not empty.
Character firstOf(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    const Character not_a_character{1, false, first};
    const std::size_t length = announcedLength(first);
    if (length == 0 || length > text.size()) return not_a_character;
    if (length == 1) return {1, true, first};
    char32_t code = first & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(text[i])) return not_a_character;
        code = code << 6U | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    return isCharacter(code, length) ? Character{length, true, code} : not_a_character;
}

bool isIn(char32_t code, char32_t first, char32_t last) {
    return code >= first && code <= last;
}

// C1 controls; direction marks, line separators, direction embeddings and isolates.
bool isUnseen(char32_t code) {
    return isIn(code, 0x80, 0x9F) || code == 0x061C || isIn(code, 0x200E, 0x200F) ||
           isIn(code, 0x2028, 0x202E) || isIn(code, 0x2066, 0x2069);
}

// The usual short form; null: there is none.
const char* shortForm(char32_t code) {
    switch (code) {
        case '\n':
            return "\\n";
        case '\t':
            return "\\t";
        case '\r':
            return "\\r";
        default:
            return nullptr;
    }
}

void append(std::string_view bytes, const Character& character, std::string* out) {
    const char32_t code = character.code;
    if (const char* const form = shortForm(code)) {
        out->append(form);
    } else if (!character.is_valid || code < 0x20 || code == 0x7F) {
        *out += stringPrintf("\\x%02x", static_cast<unsigned>(code));
    } else if (isUnseen(code)) {
        *out += stringPrintf("\\u%04x", static_cast<unsigned>(code));
    } else {
        out->append(bytes);
    }
}

}  // namespace

std::string printable(std::string_view text, std::size_t most) {
    std::string out;
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t end = out.size();
        const Character character = firstOf(rest);
        append(rest.substr(0, character.length), character, &out);
        if (out.size() > most) {
            out.resize(end);
            return out + stringPrintf("... (%zu bytes)", text.size());
        }
        rest.remove_prefix(character.length);
    }
    return out;
}

}  // namespace quill
