#include "Reading.h"

#include <iterator>
#include <sstream>

namespace fuzz {

namespace {

std::vector<std::string> WordsOf(const std::string& line) {
    std::istringstream stream(line);
    return {std::istream_iterator<std::string>(stream), {}};
}

} // namespace

Reading Read(std::string_view text, const std::string& address) {
    Reading reading;
    reading.address = address;
    std::size_t from = 0;
    for (std::size_t end = text.find("\r\n"); end != std::string_view::npos; end = text.find("\r\n", from)) {
        const std::string line(text.substr(from, end - from));
        from = end + 2;
        const bool isConnection = line.find("c=") != std::string::npos;
        if (!isConnection && line.find("m=") == std::string::npos) {
            continue;
        }
        const std::vector<std::string> words = WordsOf(line);
        if (isConnection && words.size() >= 3) {
            (reading.sections.empty() ? reading.address : reading.sections.back().address) = words[2];
        } else if (!isConnection && words.size() >= 4) {
            reading.sections.push_back({words, {}});
        }
    }
    return reading;
}

std::string Declined(const Reading& reading, std::size_t served) {
    std::string text;
    for (std::size_t n = served; n < reading.sections.size(); ++n) {
        const Reading::Section& section = reading.sections[n];
        text += section.words[0] + " 0";
        for (std::size_t word = 2; word < section.words.size(); ++word) {
            text += " " + section.words[word];
        }
        text += "\r\n";
        text += section.address.empty() ? "" : "c=IN IP4 " + section.address + "\r\n";
    }
    return text;
}

std::string HeldText(const Reading& reading) {
    std::string text = "session " + reading.address + "\n";
    for (const Reading::Section& section : reading.sections) {
        text += "section at " + section.address + ":";
        for (const std::string& word : section.words) {
            text += " " + word;
        }
        text += "\n";
    }
    return text;
}

std::string HeldText(const SDPHandler& handler) {
    Reading held;
    held.address = handler.strSessionIPAddr;
    for (const MediaSession* const ms : handler.vecRemoteMediaSession) {
        held.sections.push_back({WordsOf(ms->strFullMLine), ms->strIPAddr});
    }
    return HeldText(held);
}

} // namespace fuzz
