// cmsdp redact: other keys, addresses and names, and the same meaning. The laws hold over every capture.
#include "Expect.h"
#include "Originals.h"
#include "Redact.h"
#include "Replacements.h"
#include "RunTool.h"

#include "SDPExplain.h"
#include "SDPHandler.h"
#include "SDPLines.h"
#include "SDPNegotiator.h"
#include "Verbs.h"

#include <algorithm>
#include <regex>

namespace tool {

namespace {

using cmsdp::FindOriginals;
using cmsdp::Original;
using cmsdp::OriginalKind;
using cmsdp::Replacements;

std::string RedactedText(const std::string& text, bool addresses = true) {
    const std::vector<Original> originals = FindOriginals(text, addresses);
    Replacements replacements(originals);
    return cmsdp::Replaced(text, originals, replacements);
}

std::string Rows(const std::string& text) {
    std::string rows;
    sdp::ForEachLine(text, [&](std::size_t offset, std::size_t length) {
        rows +=
            std::to_string(static_cast<int>(sdp::RowOf(std::string_view(text).substr(offset, length)))) + " ";
    });
    return rows;
}

ExplainInput InputOf(const std::string& text, bool srtp, bool remoteAnswers) {
    const cmsdp::Capabilities side = cmsdp::BuiltInCapabilities();
    ExplainInput input;
    input.local = side.local;
    input.srtp = srtp;
    input.floorControl = true;
    input.floorControlIfOffered = true;
    input.servedSections = side.servedSections;
    input.remoteAnswers = remoteAnswers;
    input.remote = text;
    return input;
}

// What the handler holds after the text, as lines of a description, so that the originals in it are found
// again.
std::string Held(const ExplainInput& input) {
    SDPHandler handler;
    handler.InitializeLocalSDP(input.local);
    handler.m_bSRTP = input.srtp;
    handler.SetBfcpSupport(input.floorControl);
    RemoteSDP record;
    handler.ParseTheSDP(input.remote, record);
    const auto address = [](const std::string& text) {
        return (text.find('=') == std::string::npos ? "c=IN IP4 " : "b=") + text + "\r\n";
    };
    std::string held = address(record.strAudioIPAddr) + address(record.m_VideoMain.strVideoIPAddr) +
                       address(record.m_VideoPreso.strVideoIPAddr);
    for (const std::int32_t number :
         {static_cast<std::int32_t>(record.eAudioCodec),
          static_cast<std::int32_t>(record.m_VideoMain.eVideoCodec), record.iAudioRTPPort,
          record.m_VideoMain.iVideoRTPPort, record.m_VideoPreso.iVideoRTPPort, record.iMaxBandwidth,
          record.iAudioPayload, record.iDTMFPayload, record.m_VideoMain.iFmtpMaxMbps,
          record.m_VideoMain.iFmtpMaxFrameSize}) {
        held += "b=" + std::to_string(number) + "\r\n";
    }
    for (const MediaSession* const section : handler.GetRemoteSections()) {
        held += section->strFullMLine + "\r\n" + address(section->strIPAddr) + section->striceufrag + "\r\n" +
                section->stricepwd + "\r\n" + "a=crypto:" + std::to_string(section->iCryptoTag) +
                " AES_CM_128_HMAC_SHA1_80 inline:" + section->strBase64Key + "\r\n";
        for (const std::string& candidate : section->vecCandidate) {
            held += candidate + "\r\n";
        }
    }
    return held;
}

// Our answer without its session id; it holds addresses of the far end. Ours is one that is never replaced.
std::string Answer(const ExplainInput& input) {
    SDPHandler handler;
    LocalSDP local = input.local;
    local.strDefaultIPAddr = "0.0.0.0";
    handler.InitializeLocalSDP(local);
    handler.m_bSRTP = input.srtp;
    handler.SetBfcpSupport(input.floorControl);
    RemoteSDP record;
    handler.ParseTheSDP(input.remote, record);
    const std::string ours = handler.GetLocalSDP();
    return ours.substr(ours.find("\r\ns="));
}

// A sentence without what it quotes, without its addresses, words of the far end and columns.
std::string WithoutWords(const std::string& sentence) {
    std::vector<Original> addresses;
    cmsdp::FindAddressTexts(sentence, 0, addresses);
    std::string text = sentence;
    for (auto address = addresses.rbegin(); address != addresses.rend(); ++address) {
        text.replace(address->offset, address->text.size(), "#");
    }
    text = std::regex_replace(text, std::regex("(column|offered as) [^,. ]+"), "$1 #");
    const std::size_t open = text.find('"');
    return open == std::string::npos ? text : text.erase(open, text.rfind('"') - open);
}

std::string Findings(const ExplainInput& input) {
    std::string text;
    for (const ExplainFinding& finding : Explain(input).findings) {
        text += std::string(finding.id) + " " + ExplainTopicName(finding.topic) + " " +
                ExplainSeverityName(finding.severity);
        for (const std::size_t line : finding.lines) {
            text += " " + std::to_string(line);
        }
        text += finding.field == nullptr ? "" : " " + std::string(finding.field->file);
        for (const std::string& sentence : {finding.what, finding.acted, finding.comes}) {
            text += "\n  " + WithoutWords(sentence);
        }
        text += "\n";
    }
    return text;
}

std::string Fitted(const ExplainInput& input) {
    SDPNegotiator call;
    call.SetLocal(input.local);
    call.SetSrtp(input.srtp ? SDPNegotiator::Srtp::Wanted : SDPNegotiator::Srtp::Off);
    std::string text(call.Answer(input.remote).reason);
    for (const SDPNegotiator::Stream& stream : call.Streams()) {
        text += "\n" + std::to_string(static_cast<int>(stream.state)) + " " + std::to_string(stream.codec) +
                " " + std::to_string(stream.port) + " " + std::to_string(static_cast<int>(stream.suite)) +
                " " + std::string(stream.reason);
    }
    return text;
}

class RedactVerb : public ToolTest {};

TEST_F(RedactVerb, ReplacesKeysAlone) {
    const Result run = CmsdpReads("v=0\r\n"
                                  "o=alice 1 1 IN IP4 198.18.7.7\r\n"
                                  "m=audio 5004 RTP/SAVP 0\r\n"
                                  "a=crypto:1 AES_CM_128_HMAC_SHA1_80 "
                                  "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz|2^20|1:4\r\n"
                                  "a=crypto:2 AES_CM_128_HMAC_SHA1_32 "
                                  "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n",
                                  {"redact"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out, "v=0\r\n"
                         "o=alice 1 1 IN IP4 198.18.7.7\r\n"
                         "m=audio 5004 RTP/SAVP 0\r\n"
                         "a=crypto:1 AES_CM_128_HMAC_SHA1_80 "
                         "inline:1xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx|2^20|1:4\r\n"
                         "a=crypto:2 AES_CM_128_HMAC_SHA1_32 "
                         "inline:1xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\r\n");
    EXPECT_TEXT(run.err, "cmsdp: replaced 1 key; addresses and names stay without --addresses\n");
}

TEST_F(RedactVerb, ReplacesEverythingThatNamesSomebody) {
    const Result run =
        CmsdpReads("v=0\r\n"
                   "o=alice 1 1 IN IP4 198.18.7.7\r\n"
                   "s=Weekly meeting\r\n"
                   "i=alice asks\r\n"
                   "u=http://alice.test/?x\r\n"
                   "e=Alice <alice@alice.test>\r\n"
                   "p=+1 617\r\n"
                   "c=IN IP6 2001:470::7%eth0\r\n"
                   "a=tool:phone 1.2\r\n"
                   "m=audio 5004 RTP/AVP 0\r\n"
                   "c=IN IP4 224.2.36.42/127\r\n"
                   "a=rtcp:5005 IN IP4 alice.test\r\n"
                   "a=ice-ufrag:F7gI\r\n"
                   "a=ice-pwd:x9cml/YzichV2+XlhiMu8g\r\n"
                   "a=candidate:Hc6120707 1 UDP 9 198.18.7.7 5004 typ srflx raddr 10.7.7.7 rport 5 "
                   "ufrag F7gI\r\n"
                   "a=candidate:Ha0707 1 UDP 9 e5.local 5004 typ host\r\n"
                   "a=remote-candidates:1 198.18.7.7 5004\r\n"
                   "a=ssrc:7 cname:sip:bob@198.18.7.7:5060\r\n"
                   "a=x-from:bob@198.18.7.7:5060 fe80::7\r\n"
                   "a=fingerprint:sha-1 4A:AD:B9:B1:3F:82:18:3B:54:02:12:DF:3E:5D:49:6B:19:E5:7C:AB\r\n",
                   {"redact", "--addresses"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out,
                "v=0\r\n"
                "o=user1 1 1 IN IP4 192.0.2.1\r\n"
                "s=word1 word2\r\n"
                "i=user1 word3\r\n"
                "u=http://host1.example/\r\n"
                "e=word4 <user1@host1.example>\r\n"
                "p=word5 word6\r\n"
                "c=IN IP6 2001:db8::1%eth0\r\n"
                "a=tool:phone 1.2\r\n"
                "m=audio 5004 RTP/AVP 0\r\n"
                "c=IN IP4 233.252.0.1/127\r\n"
                "a=rtcp:5005 IN IP4 host1.example\r\n"
                "a=ice-ufrag:1xxx\r\n"
                "a=ice-pwd:2xxxxxxxxxxxxxxxxxxxxx\r\n"
                "a=candidate:1 1 UDP 9 192.0.2.1 5004 typ srflx raddr 10.0.0.1 rport 5 ufrag 1xxx\r\n"
                "a=candidate:2 1 UDP 9 host2.local 5004 typ host\r\n"
                "a=remote-candidates:1 192.0.2.1 5004\r\n"
                "a=ssrc:7 cname:user2\r\n"
                "a=x-from:user3@192.0.2.1:5060 fe80::1\r\n"
                "a=fingerprint:sha-1 4A:AD:B9:B1:3F:82:18:3B:54:02:12:DF:3E:5D:49:6B:19:E5:7C:AB\r\n");
    EXPECT_TEXT(run.err, "cmsdp: replaced 0 keys and 21 addresses, names and credentials\n");
}

TEST_F(RedactVerb, SpecialValuesStay) {
    const std::string text =
        "v=0\r\n"
        "o=- 1 1 IN IP4 0.0.0.0\r\n"
        "s=-\r\n"
        "k=prompt\r\n"
        "c=IN IP6 ::\r\n"
        "m=audio 0 RTP/SAVP 0\r\n"
        "a=rtcp:9 IN IP6 ::1\r\n"
        "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA\r\n";
    EXPECT_TEXT(RedactedText(text), text);
}

TEST_F(RedactVerb, AZeroKeyWithASaltStaysZero) {
    EXPECT_TEXT(RedactedText(
                    "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:AAAAAAAAAAAAAAAAAAAAAHh6b21jdGwgKCkgewky\r\n"),
                "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:AAAAAAAAAAAAAAAAAAAAAH1xxxxxxxxxxxxxxxxx\r\n");
}

TEST_F(RedactVerb, AKeyKeepsWhatMakesAnotherRow) {
    EXPECT_TEXT(RedactedText("a=crypto:1 AEAD_AES_256_GCM inline:c2VjcmV0c=\r\n"
                             "k=base64:b=VjcmV0cQ==\r\n"
                             "s=the c=IN IP4 198.18.7.7\r\n"),
                "a=crypto:1 AEAD_AES_256_GCM inline:1xxxxxxxc=\r\n"
                "k=base64:b=2xxxxxxw==\r\n"
                "s=word1 c=3x word2 192.0.2.1\r\n");
}

TEST_F(RedactVerb, AWrongKeyStaysWrong) {
    EXPECT_TEXT(RedactedText("a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:abc\r\n"
                             "a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:a*c\r\n"
                             "a=crypto:3 AES_CM_128_HMAC_SHA1_32 1234567abc\r\n"
                             "a=crypto:4 AES_CM_128_HMAC_SHA1_32 inline:\r\n"),
                "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:1xx\r\n"
                "a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:2*x\r\n"
                "a=crypto:3 AES_CM_128_HMAC_SHA1_32 3xxxxxxxxx\r\n"
                "a=crypto:4 AES_CM_128_HMAC_SHA1_32 inline:\r\n");
}

TEST_F(RedactVerb, AnUnknownSuiteStays) {
    EXPECT_TEXT(RedactedText("a=crypto:1 NULL_HMAC_SHA1_80 inline:WVNfX19zZW1jdGwgKCkg\r\n"),
                "a=crypto:1 NULL_HMAC_SHA1_80 inline:1xxxxxxxxxxxxxxxxxxx\r\n");
}

TEST_F(RedactVerb, NoReplacementIsAnOriginal) {
    EXPECT_TEXT(RedactedText("o=user1 1 1 IN IP4 192.0.2.1\r\n"
                             "c=IN IP4 192.0.2.2\r\n"
                             "c=IN IP4 192.0.2.300\r\n"
                             "a=crypto:1 X inline:1xxxxx\r\n"),
                "o=user2 1 1 IN IP4 192.0.2.3\r\n"
                "c=IN IP4 192.0.2.4\r\n"
                "c=IN IP4 192.0.2.256\r\n"
                "a=crypto:1 1 inline:2xxxxx\r\n");
}

TEST_F(RedactVerb, ManyAddressesFindMoreRanges) {
    std::string text;
    for (int i = 0; i < 2000; ++i) {
        text += "c=IN IP4 8.8." + std::to_string(i / 200) + "." + std::to_string(i % 200) + "\r\n";
    }
    const std::string redacted = RedactedText(text);
    EXPECT_TEXT(redacted.substr(0, 20), "c=IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(redacted.substr(redacted.size() - 23), "c=IN IP4 198.18.4.222\r\n");
}

TEST_F(RedactVerb, WhatCannotBeReadEndsWithStatusThree) {
    const Result run = Cmsdp({"redact", "missing.sdp"});
    EXPECT_EQ(run.status, 3);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err,
                "cmsdp: missing.sdp: cannot be read: No such file or directory; name a file that holds a "
                "session description, or - for standard input\n");
}

TEST_F(RedactVerb, EveryCaptureMeansTheSame) {
    for (const std::string& name : Captures()) {
        const std::string text = Capture(name);
        const std::vector<Original> originals = FindOriginals(text, true);
        Replacements replacements(originals);
        const bool isAnswer = name.find("-answer") != std::string::npos;
        const ExplainInput before = InputOf(text, text.find("a=crypto:") != std::string::npos, isAnswer);
        ExplainInput after = before;
        after.remote = cmsdp::Replaced(text, originals, replacements);
        EXPECT_TEXT(Rows(after.remote), Rows(text)) << name;
        const auto replaced = [&replacements](const std::string& held) {
            return cmsdp::Replaced(held, FindOriginals(held, true), replacements);
        };
        EXPECT_TEXT(Held(after), replaced(Held(before))) << name;
        EXPECT_TEXT(Answer(after), replaced(Answer(before))) << name;
        EXPECT_TEXT(Findings(after), Findings(before)) << name;
        EXPECT_TEXT(Fitted(after), Fitted(before)) << name;
    }
}

TEST_F(RedactVerb, WithoutAddressesOnlyKeysChange) {
    for (const std::string& name : Captures()) {
        const std::string text = Capture(name);
        const std::string redacted = RedactedText(text, false);
        ASSERT_EQ(redacted.size(), text.size()) << name;
        EXPECT_TEXT(Rows(redacted), Rows(text)) << name;
        EXPECT_TEXT(cmsdp::Redact(redacted), cmsdp::Redact(text)) << name;
    }
}

TEST_F(RedactVerb, NothingOriginalIsLeftOfACapture) {
    for (const std::string& name : Captures()) {
        const std::string text = Capture(name);
        const std::vector<Original> before = FindOriginals(text, true);
        const std::string redacted = RedactedText(text);
        const std::vector<Original> after = FindOriginals(redacted, true);
        ASSERT_EQ(after.size(), before.size()) << name;
        for (std::size_t i = 0; i < before.size(); ++i) {
            const std::string original(before[i].text);
            const bool isZero = original.find_first_not_of("A=") == std::string::npos;
            EXPECT_EQ(original == after[i].text, isZero) << name << ": " << original;
            if (original.size() > 8 && !isZero) {
                EXPECT_EQ(redacted.find(original), std::string::npos) << name << ": " << original;
            }
        }
    }
}

} // namespace

} // namespace tool
