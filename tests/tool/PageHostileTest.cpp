// Texts that try to leave their place in a page stand there as text. The page is taken apart here by a reader
// that shares nothing with the writer.
#include "Expect.h"
#include "RunTool.h"

#include <algorithm>
#include <cstddef>
#include <set>

namespace tool {

namespace {

struct Hostile {
    const char* name;
    std::string text;
    std::string shown; // in the line s= of the page
};

const std::vector<Hostile>& Texts() {
    static const std::vector<Hostile> texts = {
        {"script", "</script><script>alert(1)</script>",
         "&lt;/script&gt;&lt;script&gt;alert(1)&lt;/script&gt;"},
        {"style", "</style><style>*{display:none}</style>",
         "&lt;/style&gt;&lt;style&gt;*{display:none}&lt;/style&gt;"},
        {"double quote", "\" onmouseover=\"alert(1)", "&quot; onmouseover=&quot;alert(1)"},
        {"single quote", "' onfocus='alert(1)", "&#39; onfocus=&#39;alert(1)"},
        {"link", "<a href=\"javascript:alert(1)\">", "&lt;a href=&quot;javascript:alert(1)&quot;&gt;"},
        {"image", "<img src=x onerror=alert(1)>", "&lt;img src=x onerror=alert(1)&gt;"},
        {"comment", "--><!-- ]]> <![CDATA[ <?x ?>", "--&gt;&lt;!-- ]]&gt; &lt;![CDATA[ &lt;?x ?&gt;"},
        {"entity", "&lt;b&gt; &#x3c;b&#x3e; &#0;", "&amp;lt;b&amp;gt; &amp;#x3c;b&amp;#x3e; &amp;#0;"},
        {"bidi marks", "\xe2\x80\xae\xe2\x81\xa6gpj.exe\xe2\x80\x8f\xef\xbb\xbf",
         "\\xe2\\x80\\xae\\xe2\\x81\\xa6gpj.exe\\xe2\\x80\\x8f\\xef\\xbb\\xbf"},
        {"invalid UTF-8", "\xff\xc0\xbc\xed\xa0\x80", "\\xff\\xc0\\xbc\\xed\\xa0\\x80"},
        {"control bytes", std::string("\0\x1b[2J\x7f\x0c", 7), "\\x00\\x1b[2J\\x7f\\x0c"},
    };
    return texts;
}

/// The tags of a page, without the text between them. A text with "<" of its own shows up as a tag.
std::vector<std::string> TagsOf(const std::string& page) {
    std::vector<std::string> tags;
    for (std::size_t at = page.find('<'); at != std::string::npos; at = page.find('<', at + 1)) {
        tags.push_back(page.substr(at, page.find('>', at) + 1 - at));
    }
    return tags;
}

/// The tag with every value of an attribute cut out: "<a class= href=>".
std::string WithoutValues(const std::string& tag) {
    std::string out;
    bool isValue = false;
    for (const char c : tag) {
        isValue = isValue != (c == '"');
        out += isValue || c == '"' ? "" : std::string(1, c);
    }
    return out;
}

class PageHostile : public ToolTest {
protected:
    /// The page of a description with these texts in its name and in every other place.
    std::string PageFor(const std::string& name, const std::string& text) const {
        Write("remote.sdp", "v=0\r\no=" + text + " 1 1 IN IP4 192.0.2.1\r\ns=" + name +
                                "\r\nc=IN IP4 198.51.100.7\r\nt=0 0\r\nm=audio 5004 RTP/AVP 9 " + text +
                                "\r\na=rtpmap:9 " + text + "\r\na=" + text + "\r\n");
        const Result run = Cmsdp({"explain", "--exact", "--html", "page.html", "remote.sdp"});
        EXPECT_EQ(run.status, 0);
        return Read("page.html");
    }
    /// The tags of a page of a harmless text, and of parts that it does not have.
    std::set<std::string> UsualTags() const {
        std::set<std::string> usual = {"<p class=>",
                                       "<a class= href=>",
                                       "<strong>",
                                       "</strong>",
                                       "<line class= x1= x2= y1= y2=/>",
                                       "<path class= d=/>",
                                       "<path class= d= transform=/>",
                                       "<article id= class=>",
                                       "<tr>",
                                       "<tr class=>"};
        for (const std::string& tag : TagsOf(PageFor("Room 3", "Room 3"))) {
            usual.insert(WithoutValues(tag));
        }
        return usual;
    }
};

void ExpectInert(const std::string& page, const std::set<std::string>& usual) {
    for (const std::string& tag : TagsOf(page)) {
        EXPECT_EQ(usual.count(WithoutValues(tag)), 1U) << tag;
        const std::size_t link = tag.find(" href=\"");
        EXPECT_TRUE(link == std::string::npos || tag.compare(link, 8, " href=\"#") == 0) << tag;
    }
    EXPECT_TRUE(
        std::all_of(page.begin(), page.end(), [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); }));
}

TEST_F(PageHostile, TextsStandAsText) {
    const std::set<std::string> usual = UsualTags();
    for (const Hostile& hostile : Texts()) {
        SCOPED_TRACE(hostile.name);
        const std::string page = PageFor(hostile.text, hostile.text);
        EXPECT_NE(page.find("<code>s=" + hostile.shown + "</code>"), std::string::npos);
        ExpectInert(page, usual);
    }
}

TEST_F(PageHostile, AMegabyteIsCut) {
    const std::string page = PageFor(std::string(1048576, '<'), "Room 3");
    std::string shown = "<code>s=";
    for (int i = 0; i < 1998; ++i) {
        shown += "&lt;";
    }
    EXPECT_NE(page.find(shown + " [cut: 1046578 more bytes]</code>"), std::string::npos);
    EXPECT_LT(page.size(), 60000U);
    ExpectInert(page, UsualTags());
}

} // namespace

} // namespace tool
