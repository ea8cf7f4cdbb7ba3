// Escapes bytes outside printable ASCII. Byte by byte on purpose: no list of harmless code points to keep.
//
// Tests: tests/tool/VisibleTest.cpp
#include "Visible.h"

namespace cmsdp {

namespace {

void AppendByte(std::string& out, char c) {
    static const char digits[] = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20U && byte < 0x7fU) {
        out += c;
        return;
    }
    out += "\\x";
    out += digits[byte >> 4U];
    out += digits[byte & 0xfU];
}

} // namespace

std::string Visible(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        if (c == '\\') {
            out += "\\\\";
        } else {
            AppendByte(out, c);
        }
    }
    return out;
}

std::string VisibleBytes(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        AppendByte(out, c);
    }
    return out;
}

std::string VisibleLines(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool endsLine = text.compare(i, 2, "\r\n") == 0;
        if (endsLine) {
            out += "\r\n";
            ++i;
        } else {
            AppendByte(out, text[i]);
        }
    }
    return out;
}

} // namespace cmsdp
