// HTML and SVG, written so that no text can leave its place.
//
//     Markup page;
//     page.Open("p", {{"class", "note"}}).Text("a=fmtp:97 <script>").Close();
//     page.Take(); // <p class="note">a=fmtp:97 &lt;script&gt;</p>
//
// Every byte of a page passes through this class. Names of elements and attributes are the program's own
// literals; texts and values of attributes may hold anything.
//
// Tests: tests/tool/MarkupTest.cpp
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cmsdp {

/// Writes one document.
class Markup {
public:
    using Attributes = std::initializer_list<std::pair<const char*, std::string_view>>;

    /// Bytes of one text that are shown; the rest is counted.
    static constexpr std::size_t kMostText = 2000;

    /// The document type of HTML, which has to come first.
    void Doctype();
    /// Opens an element. The value of "href" is the id of an element of the same page: the writer has no way
    /// to link elsewhere. An attribute with an empty value is left out.
    Markup& Open(const char* element, Attributes attributes = {});
    /// Closes the innermost open element. Without one nothing happens.
    Markup& Close();
    /// An element that has no content.
    Markup& Void(const char* element, Attributes attributes = {});
    /// Text inside the open element. Keys become "***", every byte outside printable ASCII \xNN, and
    /// what follows the first kMostText bytes as its length.
    Markup& Text(std::string_view text);
    /// Opens an element, writes the text and closes it.
    Markup& Element(const char* element, Attributes attributes, std::string_view text);
    Markup& Element(const char* element, std::string_view text);
    /// A style sheet of the program's own. Without "<", so that it cannot end the element.
    void Style(std::string_view rules);
    /// Closes what is open and hands the document over.
    std::string Take();

private:
    void Begin(const char* element, Attributes attributes);

    std::string m_out;
    std::vector<const char*> m_open;
};

} // namespace cmsdp
