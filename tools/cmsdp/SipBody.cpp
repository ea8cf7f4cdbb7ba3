// Stage: a SIP message, its body.
// Input: the bytes of the body and the headers that describe it. Output: the first description in it.
// Touches nothing.
// A description that is in the body and cannot be read is not the same as none: the reason is returned.
// Test: tests/tool/SipMessageTest.cpp
#include "SipBody.h"

#include "Clean.h"
#include "Words.h"

#include <algorithm>
#include <iterator>

namespace cmsdp {

namespace {

constexpr int kDeepestPart = 4; // multipart bodies inside of each other

bool IsType(const std::string& value, std::string_view type) {
    return LowerCase(Trimmed(std::string_view(value).substr(0, value.find(';')))) == type;
}

bool IsMultipart(const SipHeaders& headers) {
    return LowerCase(headers["content-type"]).compare(0, 10, "multipart/") == 0;
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

// RFC 2045, 6.7: "=" at the end of a line continues it, blanks there are the transport's.
std::string FromQuotedPrintable(std::string_view text) {
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        const std::string_view line = TakeLine(text, at);
        const std::string_view content = TrimmedAtEnd(line);
        const bool isSoft = !content.empty() && content.back() == '=';
        out += DecodedQuotedLine(isSoft ? content.substr(0, content.size() - 1) : content);
        out += isSoft ? std::string_view() : text.substr(begin + line.size(), at - begin - line.size());
    }
    return out;
}

SipBody Find(std::string_view body, const SipHeaders& headers, int depth);

// RFC 2046, 5.1: parts begin after "--boundary"; the line end in front of a boundary belongs to the boundary.
SipBody FindInParts(std::string_view body, const std::string& boundary, int depth) {
    const std::string mark = "--" + boundary;
    SipBody found;
    std::size_t begin = std::string_view::npos;
    for (std::size_t at = 0; at < body.size() && !found.hasDescription;) {
        const std::size_t lineBegin = at;
        if (TakeLine(body, at).compare(0, mark.size(), mark) != 0) {
            continue;
        }
        if (begin != std::string_view::npos) {
            const std::string_view part = WithoutLastEnd(body.substr(begin, lineBegin - begin));
            const SipHeaders headers = ReadSipHeaders(part);
            SipBody inside = Find(part.substr(headers.end), headers, depth);
            found = inside.hasDescription || found.unread.empty() ? std::move(inside) : std::move(found);
        }
        begin = at;
    }
    return found;
}

SipBody Unread(const std::string& why) {
    SipBody none;
    none.unread = why;
    return none;
}

SipBody FindDecoded(std::string_view body, const SipHeaders& headers, int depth) {
    if (IsMultipart(headers)) {
        return depth == 0
                   ? Unread("the body has multipart bodies in multipart bodies and is not read")
                   : FindInParts(body, HeaderParameter(headers["content-type"], "boundary"), depth - 1);
    }
    SipBody found;
    found.hasDescription = !body.empty();
    found.description = body;
    return found;
}

SipBody Find(std::string_view body, const SipHeaders& headers, int depth) {
    if (body.empty() || (!IsMultipart(headers) && !IsDescription(headers))) {
        return {};
    }
    const std::string& coding = headers["content-encoding"];
    if (!coding.empty() && LowerCase(coding) != "identity") {
        return Unread("the body is encoded as " + Quoted(coding) + " and is not read");
    }
    const std::string transfer = LowerCase(headers["content-transfer-encoding"]);
    if (transfer == "base64") {
        return FindDecoded(FromBase64(body), headers, depth);
    }
    if (transfer == "quoted-printable") {
        return FindDecoded(FromQuotedPrintable(body), headers, depth);
    }
    if (transfer.empty() || transfer == "7bit" || transfer == "8bit" || transfer == "binary") {
        return FindDecoded(body, headers, depth);
    }
    return Unread("the body is encoded as " + Quoted(transfer) + " and is not read");
}

} // namespace

SipBody ReadSipBody(std::string_view body, const SipHeaders& headers) {
    if (headers["content-type"].empty() && headers["content-encoding"].empty() &&
        body.compare(0, 3, "v=0") == 0) {
        return {true, std::string(body), "",
                "the body has no Content-Type (RFC 3261, 20.15); it is read as a description"};
    }
    return Find(body, headers, kDeepestPart);
}

} // namespace cmsdp
