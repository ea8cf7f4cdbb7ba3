// Stage: a SIP message, its start line, its headers and the length of its body.
// Input: the bytes of one message. Output: what a timeline needs of it.
// Touches nothing.
// A body is taken as RFC 3261, 18.3 says; what does not agree with its headers is noted, not repaired.
// Test: tests/tool/SipMessageTest.cpp
#include "SipMessage.h"

#include "SipBody.h"
#include "SipHeaders.h"
#include "Words.h"

#include <algorithm>

namespace cmsdp {

namespace {

constexpr std::string_view kSipVersion = "SIP/2.0";

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
    if (words.size() < 2 || IsBlank(line[0])) { // a line that begins with a blank continues a header
        return false;
    }
    if (words[0] == kSipVersion && words[1].size() == 3 && IsNumber(words[1]) && words[1][0] != '0') {
        const std::size_t after = static_cast<std::size_t>(words[1].data() - line.data()) + words[1].size();
        message.status = std::stoi(std::string(words[1]));
        message.reason = Trimmed(line.substr(after));
        return true;
    }
    message.method = words[0];
    return words.size() == 3 && words[2] == kSipVersion && IsMethod(words[0]);
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

// The body of a message whose end is not in the capture.
std::string_view CutByCapture(std::string_view rest, const std::string& length, SipMessage& message) {
    const std::size_t count = IsNumber(length) ? std::stoul(length) : rest.size() + 1;
    if (count <= rest.size()) {
        return rest.substr(0, count);
    }
    message.isCut = true;
    message.notes.push_back(rest.empty() && !IsNumber(length)
                                ? "the capture ends within the headers of this message"
                                : "the capture holds " + std::to_string(rest.size()) +
                                      (IsNumber(length) ? " of " + Bytes(count) : " bytes") +
                                      " of the body; what the rest says is not known");
    return rest;
}

// The text without the empty lines at its end.
std::string_view WithoutEmptyLines(std::string_view text) {
    const std::size_t feed = text.find('\n', TrimmedAtEnd(text).size());
    return text.substr(0, feed == std::string_view::npos ? text.size() : feed + 1);
}

// The body in a pasted text: what follows it, such as an empty line, may be part of a log. An encoded body
// has no lines to tell it by.
std::string_view CutByLines(std::string_view rest, const std::string& length, const SipHeaders& headers) {
    const std::size_t count = IsNumber(length) ? std::stoul(length) : rest.size() + 1;
    if (count <= rest.size() && Trimmed(rest.substr(count)).empty()) {
        return WithoutEmptyLines(rest.substr(0, count));
    }
    if (headers.Has("content-transfer-encoding") || headers.Has("content-encoding")) {
        return rest;
    }
    std::size_t end = 0;
    for (std::size_t at = 0; at < rest.size();) {
        const std::string_view line = TakeLine(rest, at);
        end = LooksLikeSdp(line) || line.compare(0, 2, "--") == 0 ? at : end;
    }
    return rest.substr(0, end);
}

void ReadBody(std::string_view body, const SipHeaders& headers, SipMessage& message) {
    SipBody read = ReadSipBody(body, headers);
    for (const std::string& note : {read.unread, read.note}) {
        if (!note.empty()) {
            message.notes.push_back(note);
        }
    }
    message.hasDescription = read.hasDescription;
    message.description = std::move(read.description);
    message.unread = std::move(read.unread);
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
    message.replaces =
        Trimmed(std::string_view(headers["replaces"]).substr(0, headers["replaces"].find(';')));
    const std::string_view rest = text.substr(at + headers.end);
    const std::string& length = headers["content-length"];
    ReadBody(end == BodyEnd::Paste ? CutByLines(rest, length, headers)
             : end == BodyEnd::Cut ? CutByCapture(rest, length, message)
                                   : CutByLength(rest, length, message),
             headers, message);
    if (message.isCut && !message.hasDescription && message.unread.empty()) {
        message.unread = message.notes.front();
    }
    return message;
}

} // namespace cmsdp
