// The short texts, each written out.
#include "HostileTexts.h"

#include <algorithm>

namespace support {

namespace {

struct Fixed {
    const char* name;
    std::string text;
};

std::string Repeat(const std::string& piece, int times) {
    std::string allText;
    for (int i = 0; i < times; ++i) {
        allText += piece;
    }
    return allText;
}

/// Returns the text with every "@" replaced by a zero byte.
std::string WithZeros(std::string text) {
    std::replace(text.begin(), text.end(), '@', '\0');
    return text;
}

} // namespace

const std::vector<HostileText>& ShortHostileTexts() {
    static const std::string key = "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0";
    static const std::string audio = "m=audio 5000 RTP/AVP 0 101\r\n";
    static const std::string video = "m=video 5002 RTP/AVP 97\r\n";
    static const std::string floor = "m=application 5006 UDP/BFCP *\r\n";
    static const std::vector<Fixed> texts = {
        {"empty", ""},
        {"one byte", "v"},
        {"one line end", "\r\n"},
        {"half a line end", "\r"},
        {"a one-character last line", audio + "x"},
        {"no final line end", "v=0\r\nm=audio 5000 RTP/AVP 0"},
        {"line feeds alone", "v=0\nc=IN IP4 1.2.3.4\nm=audio 5000 RTP/AVP 0\n"},
        {"line feeds, then one line end", "v=0\nc=IN IP4 1.2.3.4\nm=audio 5000 RTP/AVP 0\n\r\n"},
        {"carriage returns alone", "v=0\rm=audio 5000 RTP/AVP 0\r"},
        {"doubled carriage returns", "v=0\r\r\nm=audio 5000 RTP/AVP 0\r\r\na=sendonly\r\r\n"},
        {"blank lines everywhere", "\r\n\r\n" + audio + "\r\n\r\na=sendonly\r\n\r\n"},
        {"a zero byte in every place",
         WithZeros("m=audio 50@00 RTP/AVP 0@ 101\r\na=rtpmap:@0 x@y\r\nc=IN IP4 @\r\na@=sendonly\r\n@")},
        {"zero bytes only", std::string(64, '\0')},
        {"a zero byte in a key",
         audio + "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + key + WithZeros("@|2^31\r\n")},
        {"bytes above 127", "m=audio 5000 \xff\xfe \x80\x81\r\na=\xef\xbb\xbf\r\nc=\xc3\xa4 \xa0 \xff\r\n"},
        {"tabs and blanks around everything",
         " \tm=audio\t5000 \t RTP/AVP\t0 \t\r\n c= IN  IP4 \t1.2.3.4 \r\n"},
        {"a very long line", "a=" + std::string(65536, 'x') + "\r\n"},
        {"a very long word list", "m=audio 5000 RTP/AVP" + Repeat(" 0", 20000) + "\r\n"},
        {"many short lines", Repeat("a=\r\n", 20000)},
        {"another protocol", "GET / HTTP/1.1\r\nHost: x\r\nCookie: a=b; c=d; m=e\r\n\r\n"},
        {"media before the session", audio + "v=0\r\no=- 1 1 IN IP4 1.2.3.4\r\nc=IN IP4 1.2.3.4\r\n"},
        {"attributes before any media",
         "a=rtpmap:0 PCMU/8000\r\na=fmtp:0 x\r\na=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + key +
             "\r\na=ice-ufrag:x\r\na=candidate:x\r\na=content:slides\r\na=floorctrl:s-only\r\na=confid:1\r\n"
             "a=userid:1\r\na=inactive\r\nb=TIAS:5\r\n"},
        {"lines cut short", "c=\r\nm=\r\na=\r\nb=\r\n" + audio +
                                "a=rtpmap\r\na=rtpmap:\r\na=fmtp:\r\na=crypto:\r\na=ice\r\na=candidate:\r\n"
                                "a=content:\r\nb=TIAS:\r\na=floorctrl:\r\na=confid:\r\na=userid:\r\n"},
        {"a thousand sections", Repeat(audio + video, 500)},
        {"short media lines", "m=audio\r\nm=audio 5000\r\nm=audio 5000 RTP/AVP\r\na=sendonly\r\n"},
        {"ports out of range", "m=audio 99999999999999999999 RTP/AVP 0\r\nm=video -1 RTP/AVP 97\r\n"
                               "m=application 4294967296 UDP/BFCP *\r\nm=audio 5000/2 RTP/AVP 0\r\n"},
        {"keywords inside other lines",
         audio + "a=x c=1 2 3.3.3.3 m=video 1 RTP/AVP 1\r\ns=c=IN IP4 9.9.9.9\r\n"},
        {"numbers out of range",
         "b=AS:99999999999999999999\r\n" + audio + "b=TIAS:99999999999999999999\r\n" + video +
             "b=TIAS:2147483647\r\na=rtpmap:97 H264/90000\r\n"
             "a=fmtp:97 max-mbps=99999999999999999999;max-fs=4294967296;max-br=2147483648;"
             "packetization-mode=18446744073709551616;profile-level-id=4280FFFFFFFFFFFFFFFFFFFFFF\r\n"},
        {"sums out of range", audio + "b=TIAS:2147483647\r\n" + video + "b=TIAS:2147483647\r\n"},
        {"a payload listed twice", "m=video 5002 RTP/AVP 97 97\r\na=rtpmap:97 H264/90000\r\na=rtpmap:97 "
                                   "VP8/90000\r\na=fmtp:97 max-fs=1\r\n"},
        {"maps of payloads that are not listed", audio + "a=rtpmap:99 x/1\r\na=fmtp:99 x\r\n"},
        {"maps without a word", audio + "a=rtpmap:0\r\nx a=rtpmap:0 PCMU/8000\r\na=rtpmap\r\n"},
        {"parameters without sense", video + "a=rtpmap:97 H264/90000\r\na=fmtp:97 " + Repeat(";", 1000) +
                                         Repeat("=", 1000) + "max-fs=;=;a=b=c\r\n"},
        {"a blank before the payload", video + "x a=fmtp:97 max-fs=1\r\n a=fmtp:97 max-fs=1\r\n"},
        {"keys cut short", audio +
                               "a=crypto:1 AES_CM_128_HMAC_SHA1_32\r\n"
                               "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:\r\n"
                               "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" +
                               key.substr(1) + "\r\n"},
        {"keys that are no base64",
         audio + "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + std::string(40, '*') + "\r\n"},
        {"keys with padding",
         audio + "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + std::string(38, 'A') + "==\r\n"},
        {"a hundred crypto lines",
         audio + Repeat("a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + key + "\r\n", 100)},
        {"tags of every kind", audio + "x a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + key +
                                   "\r\na=crypto:-1 UNKNOWN inline:" + key +
                                   "\r\na=crypto: AES_CM_128_HMAC_SHA1_32 inline:" + key +
                                   "\r\na=crypto:99999999999999999999 X inline:" + key + "\r\n"},
        {"floor control twice, contradictory",
         floor + "a=floorctrl:s-only\r\na=floorctrl:c-only\r\na=confid:x\r\na=userid:99999999999\r\n" +
             floor},
        {"contents in every section",
         audio + "a=content:slides\r\n" + video + "a=content:slides\r\na=content:main\r\na=content:alt\r\n"},
        {"media after another word", Repeat("x m=video 1 2 3\r\n", 4)},
        {"a multicast address", "c=IN IP4 224.2.1.1/127/100000\r\n" + audio},
        {"directions one after another", audio + "a=sendonly\r\na=recvonly\r\na=inactive a=sendrecv\r\n"},
        {"format directives", "c=IN IP4 %s%n%x\r\n" + audio + "a=rtpmap:0 %s%s%n\r\na=floorctrl:%n\r\n"},
        {"escape sequences", audio + "c=IN IP4 \x1b[31m\"'\\\r\na=floorctrl:\x1b]0;x\x07\r\n"},
        {"surplus sections without sense", audio + audio + "m=\x01 5000 \x02 \x03\r\nc=IN IP4 \x04\r\n"},
    };
    static const std::vector<HostileText> rows = [] {
        std::vector<HostileText> all;
        for (const Fixed& row : texts) {
            all.push_back({row.name, [&row](std::size_t) { return row.text; }});
        }
        return all;
    }();
    return rows;
}

} // namespace support
