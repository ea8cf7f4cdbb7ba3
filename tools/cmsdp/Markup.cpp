// Stage: none; the only writer of HTML and SVG.
// Input: elements, attributes and texts. Output: a document in which every text is inert.
// Touches nothing.
// Text and attributes are escaped alike, so a text is safe in both places (HTML Living Standard, 13.1.2.3).
// Test: tests/tool/MarkupTest.cpp
#include "Markup.h"

#include "Redact.h"
#include "Visible.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace cmsdp {

namespace {

// Elements that have lines of their own. Around the others a line end would show as a blank.
constexpr const char* kBlocks[] = {"article", "body",  "div",   "footer", "head", "h1",    "h2", "h3",
                                   "header",  "html",  "li",    "main",   "meta", "ol",    "p",  "section",
                                   "svg",     "table", "tbody", "thead",  "tr",   "title", "ul", "dl"};

bool IsBlock(const char* element) {
    return std::any_of(std::begin(kBlocks), std::end(kBlocks),
                       [element](const char* block) { return std::strcmp(block, element) == 0; });
}

void AppendEscaped(std::string& out, std::string_view text) {
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&#39;";
            break;
        default:
            out += c;
        }
    }
}

// Keys are hidden before the text is cut: the rest of a cut key would not be known for one.
std::string Shown(std::string_view text) {
    const std::string hidden = Secrets(false).Hide(text);
    const std::size_t kept = std::min(hidden.size(), Markup::kMostText);
    std::string out;
    AppendEscaped(out, VisibleBytes(std::string_view(hidden).substr(0, kept)));
    if (kept < hidden.size()) {
        out += " [cut: " + std::to_string(hidden.size() - kept) + " more bytes]";
    }
    return out;
}

} // namespace

void Markup::Doctype() {
    m_out += "<!DOCTYPE html>\n";
}

void Markup::Begin(const char* element, Attributes attributes) {
    m_out += '<';
    m_out += element;
    for (const auto& [name, value] : attributes) {
        if (value.empty()) {
            continue;
        }
        m_out += ' ';
        m_out += name;
        m_out += std::strcmp(name, "href") == 0 ? "=\"#" : "=\"";
        m_out += Shown(value);
        m_out += '"';
    }
}

Markup& Markup::Open(const char* element, Attributes attributes) {
    Begin(element, attributes);
    m_out += '>';
    m_open.push_back(element);
    return *this;
}

Markup& Markup::Close() {
    if (!m_open.empty()) {
        const char* const element = m_open.back();
        m_open.pop_back();
        m_out += "</";
        m_out += element;
        m_out += IsBlock(element) ? ">\n" : ">";
    }
    return *this;
}

Markup& Markup::Void(const char* element, Attributes attributes) {
    Begin(element, attributes);
    m_out += IsBlock(element) ? "/>\n" : "/>";
    return *this;
}

Markup& Markup::Text(std::string_view text) {
    m_out += Shown(text);
    return *this;
}

Markup& Markup::Element(const char* element, Attributes attributes, std::string_view text) {
    return Open(element, attributes).Text(text).Close();
}

Markup& Markup::Element(const char* element, std::string_view text) {
    return Element(element, {}, text);
}

void Markup::Style(std::string_view rules) {
    m_out += "<style>\n";
    std::remove_copy(rules.begin(), rules.end(), std::back_inserter(m_out), '<');
    m_out += "</style>\n";
}

std::string Markup::Take() {
    while (!m_open.empty()) {
        Close();
    }
    return std::move(m_out);
}

} // namespace cmsdp
