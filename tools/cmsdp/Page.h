// The page of `cmsdp explain --html`: what is known about offers and answers, as one file that needs nothing
// else.
//
//     PageData page = ...;             // PageData.h
//     std::string html = PageOf(page); // write it to a file, open it in a browser
//
// Each part of the page has a file of its own: PageStreams, PageTexts, PageFindings, PageTimeline. They write
// through Markup and add no sentence about a description: those are explain's and the record's.
//
// Tests: tests/tool/PageTest.cpp, PageHostileTest.cpp
#pragma once

#include "Markup.h"
#include "PageData.h"

#include <cstddef>
#include <string>

namespace cmsdp {

/// The whole page.
std::string PageOf(const PageData& page);

/// One card for each stream: whether it came up, its directions as arrows, its values, its findings.
void WriteStreams(Markup& out, const PageText& text);

/// The lines of a description, each with its verdict and links to its findings.
void WriteLines(Markup& out, const PageText& text);

/// The findings of a description with their cures.
void WriteFindings(Markup& out, const PageText& text);

/// Why each format of a description is or is not a codec of the local file.
void WriteWhyNot(Markup& out, const PageText& text);

/// The steps of a call as a picture and as a list.
void WriteTimeline(Markup& out, const PageData& page);

/// "f12": the anchor of a finding, and the class of what belongs to it. `index` counts from 0 in its text.
std::string FindingAnchor(const PageText& text, std::size_t index);
/// "t2-7": the anchor of a line of a description.
std::string LineAnchor(const PageText& text, std::size_t number);
/// "3 findings"
std::string CountOf(std::size_t count, const char* noun);

/// Lines of a description that the page shows.
inline constexpr std::size_t kMostPageLines = 2000;

/// The rules that every page has.
extern const char* const kPageStyle;

} // namespace cmsdp
