// The writer of HTML and SVG: whole documents, and texts that try to leave their place.
#include "Markup.h"
#include "Expect.h"

#include <gtest/gtest.h>

namespace {

using cmsdp::Markup;

std::string TextIn(const std::string& text) {
    Markup out;
    out.Element("p", text);
    return out.Take();
}

std::string ValueIn(const std::string& value) {
    Markup out;
    out.Void("path", {{"d", value}});
    return out.Take();
}

TEST(Markup, WritesADocument) {
    Markup out;
    out.Doctype();
    out.Open("html", {{"lang", "en"}}).Open("head").Void("meta", {{"charset", "utf-8"}}).Close();
    out.Open("body").Open("p", {{"class", "note"}}).Text("one ").Element("b", "two").Close();
    EXPECT_TEXT(out.Take(), "<!DOCTYPE html>\n"
                            "<html lang=\"en\"><head><meta charset=\"utf-8\"/>\n"
                            "</head>\n"
                            "<body><p class=\"note\">one <b>two</b></p>\n"
                            "</body>\n"
                            "</html>\n");
}

TEST(Markup, ClosesWhatIsOpenAndNothingElse) {
    Markup out;
    out.Close().Open("b").Close().Close().Open("i").Open("u");
    EXPECT_TEXT(out.Take(), "<b></b><i><u></u></i>");
}

TEST(Markup, LeavesOutAnEmptyAttribute) {
    Markup out;
    out.Open("a", {{"class", ""}, {"id", "x"}});
    EXPECT_TEXT(out.Take(), "<a id=\"x\"></a>");
}

TEST(Markup, LinksInsideThePageAlone) {
    Markup out;
    out.Element("a", {{"href", "javascript:alert(1)"}}, "x").Element("a", {{"href", "//example.org"}}, "y");
    EXPECT_TEXT(out.Take(), "<a href=\"#javascript:alert(1)\">x</a><a href=\"#//example.org\">y</a>");
}

TEST(Markup, EscapesText) {
    EXPECT_TEXT(TextIn("<b a=\"1\" c='2'>&amp;</b>"),
                "<p>&lt;b a=&quot;1&quot; c=&#39;2&#39;&gt;&amp;amp;&lt;/b&gt;</p>\n");
}

TEST(Markup, EscapesValues) {
    EXPECT_TEXT(ValueIn("\" onload='x'><script>"),
                "<path d=\"&quot; onload=&#39;x&#39;&gt;&lt;script&gt;\"/>");
}

TEST(Markup, ShowsBytesThatDoNotPrint) {
    EXPECT_TEXT(TextIn(std::string("a\0b\r\n\x1b[2J\x7f\xff\xe2\x80\xae", 14) + "\\x"),
                "<p>a\\x00b\\x0d\\x0a\\x1b[2J\\x7f\\xff\\xe2\\x80\\xae\\x</p>\n");
}

TEST(Markup, HidesKeys) {
    const std::string key = "WnQ5b3JkZXJvZnRoZWtleWlzdGhlcmlnaHRvbmU5";
    EXPECT_TEXT(TextIn("a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + key),
                "<p>a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:***</p>\n");
    EXPECT_TEXT(ValueIn(key), "<path d=\"***\"/>");
}

TEST(Markup, CutsALongTextWithAWord) {
    EXPECT_TEXT(TextIn(std::string(1048576, '-')),
                "<p>" + std::string(2000, '-') + " [cut: 1046576 more bytes]</p>\n");
    EXPECT_TEXT(TextIn(std::string(2000, '<')).substr(0, 11), "<p>&lt;&lt;");
}

// The end of the shown part falls into the key.
TEST(Markup, HidesAKeyBeforeItCuts) {
    const std::string key = "WnQ5b3JkZXJvZnRoZWtleWlzdGhlcmlnaHRvbmU5";
    EXPECT_TEXT(TextIn(std::string(1990, '-') + key + "------------"),
                "<p>" + std::string(1990, '-') + "***------- [cut: 5 more bytes]</p>\n");
}

TEST(Markup, AStyleSheetCannotEndItsElement) {
    Markup out;
    out.Style("p { color: red; }\n</style><script>\n");
    EXPECT_TEXT(out.Take(), "<style>\np { color: red; }\n/style>script>\n</style>\n");
}

} // namespace
