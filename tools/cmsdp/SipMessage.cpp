// Stage: a SIP message, its start line, its headers and its body.
// Input: the bytes of one message. Output: what a timeline needs of it.
// Touches nothing.
// A body is taken as RFC 3261, 18.3 says; what does not agree with its headers is noted, not repaired.
// Test: tests/tool/SipMessageTest.cpp
#include "SipMessage.h"

#include "SipHeaders.h"
#include "Words.h"

#include <algorithm>

namespace cmsdp {

namespace {

constexpr std::string_view kVersion = "SIP/2.0";

bool IsNumber(std::string_view text) {
    return !text.empty() && text.size() < 10 &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool IsMethod(std::string_view word) {
    return !word.empty() &&
           std::all_of(word.begin(), word.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

// "SIP/2.0 200 OK", "INVITE sip:bob@example.org SIP/2.0"
bool ReadStartLine(std::string_view line, SipMessage& message) {
    const std::vector<std::string_view> words = WordsOf(line);
    if (words.size() < 2) {
        return false;
    }
    if (words[0] == kVersion && words[1].size() == 3 && IsNumber(words[1]) && words[1][0] != '0') {
        const std::size_t after = static_cast<std::size_t>(words[1].data() - line.data()) + words[1].size();
        message.status = std::stoi(std::string(words[1]));
        message.reason = Trimmed(line.substr(after));
        return true;
    }
    message.method = words[0];
    return words.size() == 3 && words[2] == kVersion && IsMethod(words[0]);
}

bool ReadCSeq(const std::string& value, SipMessage& message) {
    const std::vector<std::string_view> words = WordsOf(value);
    if (words.size() != 2 || !IsNumber(words[0])) {
        return false;
    }
    message.cseq = static_cast<std::uint32_t>(std::stoul(std::string(words[0])));
    message.cseqMethod = words[1];
    return true;
}

std::string Bytes(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

// The body of a datagram or of a message that was cut out of a stream.
std::string_view CutByLength(std::string_view rest, const std::string& length, SipMessage& message) {
    if (length.empty()) {
        return rest;
    }
    if (!IsNumber(length)) {
        message.notes.emplace_back("Content-Length is no number; all that follows the headers is read");
        return rest;
    }
    const std::size_t count = std::stoul(length);
    if (count < rest.size()) {
        message.notes.push_back("Content-Length is " + Bytes(count) + " and " + Bytes(rest.size()) +
                                " follow the headers; the rest is discarded (RFC 3261, 18.3)");
    } else if (count > rest.size()) {
        message.notes.push_back("Content-Length is " + Bytes(count) + " and " + Bytes(rest.size()) +
                                " follow the headers; a request of this kind is refused with 400, a response "
                                "discarded (RFC 3261, 18.3)");
    }
    return rest.substr(0, count);
}

// The body in a pasted text: what follows it may be part of a log.
std::string_view CutByLines(std::string_view rest, const std::string& length) {
    const std::size_t count = IsNumber(length) ? std::stoul(length) : rest.size() + 1;
    if (count <= rest.size() && Trimmed(rest.substr(count)).empty()) {
        return rest.substr(0, count);
    }
    std::size_t end = 0;
    for (std::size_t at = 0; at < rest.size();) {
        const std::string_view line = TakeLine(rest, at);
        end = LooksLikeSdp(line) || line.compare(0, 2, "--") == 0 ? at : end;
    }
    return rest.substr(0, end);
}

bool IsType(const std::string& value, std::string_view type) {
    return LowerCase(Trimmed(std::string_view(value).substr(0, value.find(';')))) == type;
}

// RFC 3959: a description of disposition early-session is not part of the call's offer and answer.
bool IsDescription(const SipHeaders& headers) {
    return IsType(headers["content-type"], "application/sdp") &&
           !IsType(headers["content-disposition"], "early-session");
}

std::string_view WithoutLastEnd(std::string_view text) {
    const bool hasCr = text.size() > 1 && text[text.size() - 2] == '\r';
    return text.substr(0, text.size() - std::min<std::size_t>(text.size(), hasCr ? 2 : 1));
}

// RFC 2046, 5.1: parts begin after "--boundary"; the line end in front of a boundary belongs to the boundary.
bool FindPart(std::string_view body, const std::string& boundary, std::string_view& found) {
    const std::string mark = "--" + boundary;
    std::size_t begin = std::string_view::npos;
    for (std::size_t at = 0; at < body.size();) {
        const std::size_t lineBegin = at;
        if (TakeLine(body, at).compare(0, mark.size(), mark) != 0) {
            continue;
        }
        if (begin != std::string_view::npos) {
            const std::string_view part = WithoutLastEnd(body.substr(begin, lineBegin - begin));
            const SipHeaders headers = ReadSipHeaders(part);
            if (IsDescription(headers)) {
                found = part.substr(headers.end);
                return true;
            }
        }
        begin = at;
    }
    return false;
}

void ReadBody(std::string_view body, const SipHeaders& headers, SipMessage& message) {
    const std::string& type = headers["content-type"];
    std::string_view found = body;
    if (!headers["content-encoding"].empty() && !body.empty()) {
        message.notes.push_back("the body is encoded as " + Quoted(headers["content-encoding"]) +
                                " and is not read");
    } else if (LowerCase(type).compare(0, 10, "multipart/") == 0) {
        message.hasDescription = FindPart(body, HeaderParameter(type, "boundary"), found);
    } else if (type.empty() && body.compare(0, 3, "v=0") == 0) {
        message.hasDescription = true;
        message.notes.emplace_back(
            "the body has no Content-Type (RFC 3261, 20.15); it is read as a description");
    } else {
        message.hasDescription = IsDescription(headers) && !body.empty();
    }
    message.description = message.hasDescription ? found : std::string_view();
}

} // namespace

bool IsSipStartLine(std::string_view line) {
    SipMessage unused;
    return ReadStartLine(line, unused);
}

std::optional<SipMessage> ParseSipMessage(std::string_view text, BodyEnd end) {
    SipMessage message;
    std::size_t at = 0;
    if (!ReadStartLine(TakeLine(text, at), message)) {
        return std::nullopt;
    }
    const SipHeaders headers = ReadSipHeaders(text.substr(at));
    message.callId = headers["call-id"];
    if (message.callId.empty() || !ReadCSeq(headers["cseq"], message)) {
        return std::nullopt;
    }
    message.fromTag = HeaderParameter(headers["from"], "tag");
    message.toTag = HeaderParameter(headers["to"], "tag");
    message.fromUri = HeaderUri(headers["from"]);
    message.toUri = HeaderUri(headers["to"]);
    message.warning = headers["warning"];
    const std::string_view rest = text.substr(at + headers.end);
    const std::string& length = headers["content-length"];
    ReadBody(end == BodyEnd::Paste ? CutByLines(rest, length) : CutByLength(rest, length, message), headers,
             message);
    return message;
}

} // namespace cmsdp
