// The descriptions that the foreign readers are given, each with a name that says how it came about.
#pragma once

#include <string>
#include <vector>

namespace interop {

struct Text {
    std::string name;
    std::string body;
};

/// Answers of the component to every capture of the corpus, with several capabilities.
std::vector<Text> CorpusAnswers();
/// Offers and answers of two handlers that talk to each other.
std::vector<Text> Conversations();
/// An offer and an answer of each of 400 random sets of capabilities, the same in every run.
std::vector<Text> RandomTexts();
/// The same three kinds written by SDPNegotiator. Capabilities that it refuses give no text.
std::vector<Text> NegotiatedTexts();

} // namespace interop
