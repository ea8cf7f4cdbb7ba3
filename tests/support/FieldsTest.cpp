// The list of fields against SDP.h itself, the text of a record, and what prints records in a form of its
// own: none may forget a field.
#include "Fields.h"

#include "Describe.h"
#include "DocumentParts.h"
#include "Expect.h"
#include "RecordSamples.h"

#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

namespace {

/// The members that SDP.h declares in the body of a struct, one line each. A declaration ends at a semicolon,
/// and the name is the last word before its extents or its initial value.
std::string DeclaredIn(const std::string& record) {
    std::ifstream file(COMMONMEDIA_SOURCE_DIR "/commonmedia/include/SDP.h");
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    text = std::regex_replace(text, std::regex("//[^\n]*|enum \\w+ : [^}]*\\};"), "");
    const std::regex head("struct (COMMONMEDIA_EXPORT )?" + record + "( : public \\w+)? \\{");
    std::smatch found;
    if (!std::regex_search(text, found, head)) {
        return "SDP.h declares no " + record + "\n";
    }
    std::string body = found.suffix().str();
    body.resize(body.find("\n};"));
    const std::regex member(R"(^\s*[\w:<>*\s]+\s(\w+)(\[[^=]*)?(\s*=[^=]*)?$)");
    std::string names;
    for (std::size_t end = body.find(';'); end != std::string::npos; end = body.find(';')) {
        const std::string declaration = body.substr(0, end);
        body.erase(0, end + 1);
        if (declaration.find("static ") == std::string::npos &&
            std::regex_match(declaration, found, member)) {
            names += found[1].str() + "\n";
        }
    }
    return names;
}

/// The members that Fields.h lists, one line each.
template <typename Record>
std::string Listed() {
    std::string names;
    const auto visit = [&names](const char* name, const auto&) { names += std::string(name) + "\n"; };
    const Record record;
    support::VisitMembers(support::Of<Record>(), record, visit);
    return names;
}

TEST(Fields, EveryFieldThatIsDeclaredIsListedInItsOrder) {
    EXPECT_TEXT(Listed<VideoParms>(), DeclaredIn("VideoParms"));
    EXPECT_TEXT(Listed<baseSDP>(), DeclaredIn("baseSDP"));
    EXPECT_TEXT(Listed<LocalSDP>(), DeclaredIn("baseSDP") + DeclaredIn("LocalSDP"));
    EXPECT_TEXT(Listed<RemoteSDP>(), DeclaredIn("baseSDP") + DeclaredIn("RemoteSDP"));
    EXPECT_TEXT(Listed<RtpMap>(), DeclaredIn("RtpMap"));
    EXPECT_TEXT(Listed<MediaSession>(), DeclaredIn("MediaSessionFields") + DeclaredIn("MediaSession"));
}

TEST(Fields, TheDeclarationsAreFound) {
    EXPECT_TEXT(DeclaredIn("RtpMap"), "strPayload\nstrEncodingName\nvecFmtpParms\n");
    EXPECT_TEXT(DeclaredIn("RemoteSDP"),
                "strAudioIPAddr\niAudioPayload\niDTMFPayload\nfAudioSend\nfAudioRecv\nfIsAudioValid\n");
    EXPECT_TEXT(DeclaredIn("MediaSession"), "");
    EXPECT_TEXT(DeclaredIn("NoRecord"), "SDP.h declares no NoRecord\n");
}

TEST(Fields, TheTextOfARecordTellsValuesApart) {
    RtpMap format;
    format.strPayload = "9\r\"\\";
    format.vecFmtpParms = {"a, b", ""};
    EXPECT_TEXT(support::FieldsText(format), "strPayload = \"9\\x0d\\\"\\\\\"\n"
                                             "strEncodingName = \"\"\n"
                                             "vecFmtpParms = {\"a, b\", \"\"}\n");
    EXPECT_TEXT(support::ValueText(std::vector<RtpMap*>{}), "{}");
    RtpMap bare;
    EXPECT_TEXT(support::ValueText(std::vector<RtpMap*>{&bare}),
                "{{\nstrPayload = \"\"\nstrEncodingName = \"\"\nvecFmtpParms = {}\n}}");
    EXPECT_TEXT(support::ValueText(std::list<int>{8, -1}), "{8 -1}");
}

template <typename Record>
void ExpectEveryFieldInItsText() {
    samples::ForEachChanged<Record>([](const Record& changed) {
        EXPECT_NE(support::FieldsText(changed), support::FieldsText(Record()));
    });
}

TEST(Fields, TheTextOfARecordShowsEachField) {
    ExpectEveryFieldInItsText<LocalSDP>();
    ExpectEveryFieldInItsText<RemoteSDP>();
    ExpectEveryFieldInItsText<MediaSession>();
    ExpectEveryFieldInItsText<RtpMap>();
}

TEST(Fields, DescribeShowsEachField) {
    samples::ForEachChanged<RemoteSDP>(
        [](const RemoteSDP& changed) { EXPECT_NE(support::Describe(changed), support::kFreshRemote); });
    EXPECT_TEXT(support::Describe(RemoteSDP()), support::kFreshRemote);
}

TEST(Fields, TheLinesOfADocumentShowEachFieldOfASection) {
    samples::ForEachChanged<MediaSession>([](const MediaSession& changed) {
        EXPECT_NE(documents::SectionLines(changed), std::vector<std::string>());
    });
    EXPECT_EQ(documents::SectionLines(MediaSession()), std::vector<std::string>());
}

} // namespace
