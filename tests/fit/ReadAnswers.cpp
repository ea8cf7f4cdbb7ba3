// What foreign programs make of answers: strict parsers, and the offer/answer engine of libre.
//
// Input: on standard input a line per pair, "OFFER<tab>ANSWER", file names. Output: a line per complaint,
// "ANSWER: reader: what it says". The readers are those of tests/interop.
#include "../interop/ForeignReader.h"
#include "OfferAnswer.h"

#include <fstream>
#include <iostream>
#include <sstream>

namespace {

struct Reader {
    const char* name;
    interop::Reading (*read)(const std::string& text);
};

constexpr Reader kReaders[] = {
    {"sofia-sip", interop::ReadWithSofia},
    {"osip", interop::ReadWithOsip},
    {"libre", interop::ReadWithRe},
};

std::string Bytes(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

} // namespace

int main() {
    std::string line;
    std::size_t engineRuns = 0;
    while (std::getline(std::cin, line)) {
        const std::size_t tab = line.find('\t');
        const std::string answerName = line.substr(tab + 1);
        const std::string offer = Bytes(line.substr(0, tab));
        const std::string answer = Bytes(answerName);
        for (const Reader& reader : kReaders) {
            const interop::Reading reading = reader.read(answer);
            if (!reading.isTaken) {
                std::cout << answerName << ": " << reader.name << ": refused " << reading.complaint << "\n";
            }
        }
        const fit::Exchange exchange = fit::Exchanged(offer, answer);
        engineRuns += exchange.isOffered ? 1 : 0;
        if (exchange.isOffered && !exchange.complaint.empty()) {
            std::cout << answerName << ": libre's engine: " << exchange.complaint << "\n";
        }
    }
    std::cerr << engineRuns << " exchanges by libre's engine\n";
    return 0;
}
