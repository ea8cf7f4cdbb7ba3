// What dumps hide: key text that strayed into a dumped field. The dumps themselves, line by line, are tested
// beside their records, in SDPSectionTest.cpp, SDPBaseTest.cpp, SDPVideoTest.cpp, SDPLocalTest.cpp and
// SDPRemoteTest.cpp.
#include "Expect.h"

#include <SDP.h>

#include <string>

namespace {

TEST(SDPDump, KeyTextIsMaskedInWhateverCase) {
    MediaSession ms;
    ms.strIPAddr = "INLINE:c2VjcmV0 Inline:bW9yZQ|2^31 xinline: nline:shown :inline:bGFzdA";
    EXPECT_TEXT(ms.ToDiag(), "eContent: 100\niPort: 0\n"
                             "strIPAddr: INLINE:*** Inline:*** xinline:*** nline:shown :inline:***\n"
                             "fRecv: true\nfSend: true\nstrVideoLevel: \nstrMaxBandwidth: \n"
                             "iBfcpConfid: 0\niBfcpUserid: 0\nstrFloorctrl: \n\n\n");
}

TEST(SDPDump, OtherWordsInFrontOfAColonAreShown) {
    MediaSession ms;
    ms.strIPAddr = "ONLINE:a XNLINE:b iNlIn:c inlineX:d I\x0eLINE:e inline;f \tnline:g";
    EXPECT_NE(
        ms.ToDiag().find("strIPAddr: ONLINE:a XNLINE:b iNlIn:c inlineX:d I\x0eLINE:e inline;f \tnline:g\n"),
        std::string::npos);
}

// What stands right behind a masked key is too short for another method.
TEST(SDPDump, ColonsBehindAMaskedKeyAreShown) {
    MediaSession ms;
    ms.strFloorctrl = "inline:YWJj :x: line: inline:ZGVm";
    EXPECT_NE(ms.ToDiag().find("strFloorctrl: inline:*** :x: line: inline:***\n"), std::string::npos);
}

TEST(SDPDump, KeyMethodAtTheVeryEndHasNothingToHide) {
    VideoParms parms;
    parms.strVideoIPAddr = "inline:";
    EXPECT_NE(parms.ToDiag().find("strVideoIPAddr: inline:***\n"), std::string::npos);
}

TEST(SDPDump, AKeyThatHoldsColonsIsMaskedAsOneWord) {
    MediaSession ms;
    ms.strFloorctrl = "inline:YWJj:inline:ZGVm:x s-only";
    EXPECT_NE(ms.ToDiag().find("strFloorctrl: inline:*** s-only\n"), std::string::npos);
}

} // namespace
