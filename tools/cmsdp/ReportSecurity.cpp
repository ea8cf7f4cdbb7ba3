// SRTP disagreements are the calls that come up and stay silent, so each has a sentence of its own.
//
// Tests: tests/tool/ReportTest.cpp
#include "ReportSecurity.h"

#include "Keys.h"
#include "Names.h"

namespace cmsdp {

namespace {

using Quor::media::rtp::CryptoParams;

constexpr const char* kReadSuite = "AES_CM_128_HMAC_SHA1_32";

bool Has(const std::string& text, const char* piece) {
    return text.find(piece) != std::string::npos;
}

// The record has a suite: will this side use it, and does it have the key?
std::string WithSuite(const baseSDP& record, baseSDP::SRTP_M_LINE stream, const Capabilities& c) {
    if (KeyIsZero(record, stream)) {
        return "the record holds a key of zeros: that of the crypto attribute is missing, unreadable or zero";
    }
    if (!c.srtp) {
        return "the far end gives a key, but SRTP is off on this side";
    }
    if (c.local.cryptoAlgo[stream] != record.cryptoAlgo[stream]) {
        return "the suite of this side is " + NameOf(SuiteNames(), c.local.cryptoAlgo[stream]);
    }
    return {};
}

// The record has none: did the far end want SRTP all the same?
std::string WithoutSuite(const SeenSection& section, const Capabilities& c) {
    const std::string offered = SuitesInWords(section);
    if (!offered.empty()) {
        return "not encrypted: the far end offers " + offered + "; only " + kReadSuite + " is read";
    }
    if (Has(section.transport, "TLS")) {
        return "not encrypted: the far end wants DTLS (" + section.transport + "), which is not understood";
    }
    if (Has(section.transport, "SAVP")) {
        return "not encrypted: the far end wants " + section.transport + " and gives no key";
    }
    return c.srtp ? "not encrypted: SRTP is switched on here, but the far end gives no key" : "";
}

} // namespace

void NoteSecurity(Finding& finding, const baseSDP& record, baseSDP::SRTP_M_LINE stream,
                  const Capabilities& capabilities, const SeenSection* section) {
    if (!finding.negotiated || section == nullptr) {
        return;
    }
    const bool hasSuite = record.cryptoAlgo[stream] != CryptoParams::CRYPTO_NONE;
    std::string note =
        hasSuite ? WithSuite(record, stream, capabilities) : WithoutSuite(*section, capabilities);
    if (!note.empty()) {
        finding.notes.push_back(std::move(note));
    }
}

} // namespace cmsdp
