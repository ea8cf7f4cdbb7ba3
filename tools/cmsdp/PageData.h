// What a page shows, gathered before a byte of it is written.
//
// Tests: tests/tool/PageTest.cpp
#pragma once

#include "Capabilities.h"
#include "Report.h"
#include "SDPExplain.h"
#include "Timeline.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace cmsdp {

/// One description.
struct PageText {
    std::string title;   ///< "The far end's offer"
    std::string origin;  ///< what else is known about it: a file, a step; may be empty
    std::string reading; ///< "The far end's offer, read by this side"
    std::string reader;  ///< who reads it: "this side", "callee"
    std::string writer;  ///< who wrote it: "far end", "caller"
    bool readerIsLeft = true;
    std::string text; ///< keys hidden; lines as an editor counts them
    std::vector<ExplainedLine> lines;

    bool isRead = false; ///< what follows is filled in
    std::vector<ExplainFinding> findings;
    std::size_t untried = 0; ///< Explanation::untried
    std::vector<ExplainPair> pairs;
    std::optional<Report> report; ///< the record and the verdict on each stream

    std::size_t step = 0;         ///< of the call, from 1; 0 outside of a call
    std::size_t number = 0;       ///< of the description in the page, from 1
    std::size_t firstFinding = 0; ///< number of the first of `findings` in the page, from 1
};

/// An offer and its answer. One of them may be missing.
struct PageExchange {
    std::string title; ///< "Steps 1 and 3"; empty when there is one exchange
    std::optional<PageText> offer;
    std::optional<PageText> answer;
};

struct PageData {
    std::string title; ///< "offer.sdp"
    std::vector<std::string> notes;
    std::vector<PageExchange> exchanges;
    const Call* call = nullptr; ///< drawn as a timeline; the exchanges are those of its descriptions
};

/// A description that is read as `input` says: lines, pairs, streams, and what Explain found. `side` is what
/// `input.local` was made from.
PageText ReadForPage(const ExplainInput& input, const Capabilities& side,
                     std::vector<ExplainFinding> findings, std::size_t untried);

/// A description that is shown beside one that is read. `input` is that of the other: each line has the
/// verdict that a reader like this side gives it.
PageText ShownForPage(const ExplainInput& input, const std::string& text, bool answers);

/// Numbers descriptions and findings, so that they can be linked.
void NumberPage(PageData& page);

} // namespace cmsdp
