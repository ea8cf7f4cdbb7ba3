// cmsdp redact: the meaning stays the same. The laws hold over every capture. Texts: redact.cases.
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

TEST(RedactVerb, ManyAddressesFindMoreRanges) {
    std::string text;
    for (int i = 0; i < 2000; ++i) {
        text += "c=IN IP4 8.8." + std::to_string(i / 200) + "." + std::to_string(i % 200) + "\r\n";
    }
    const std::string redacted = RedactedText(text);
    EXPECT_TEXT(redacted.substr(0, 20), "c=IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(redacted.substr(redacted.size() - 23), "c=IN IP4 198.18.4.222\r\n");
}

TEST(RedactVerb, ALineOfManyNamesCostsNoMore) {
    std::string line;
    for (int i = 0; i < 300000; ++i) {
        line += "a@b ";
    }
    EXPECT_EQ(FindOriginals(line, true).size(), 600000U);
}

TEST(RedactVerb, EveryCaptureMeansTheSame) {
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

TEST(RedactVerb, WithoutAddressesOnlyKeysChange) {
    for (const std::string& name : Captures()) {
        const std::string text = Capture(name);
        const std::string redacted = RedactedText(text, false);
        ASSERT_EQ(redacted.size(), text.size()) << name;
        EXPECT_TEXT(Rows(redacted), Rows(text)) << name;
        EXPECT_TEXT(cmsdp::Redact(redacted), cmsdp::Redact(text)) << name;
    }
}

TEST(RedactVerb, NothingOriginalIsLeftOfACapture) {
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
