// Stage: none; the page as a whole.
// Input: what was gathered about offers and answers. Output: one HTML file that loads nothing.
// Touches nothing.
// A line and its findings are joined by rules of style and by links, so the page needs no script.
// Test: tests/tool/PageTest.cpp
#include "Page.h"

#include <set>

namespace cmsdp {

namespace {

constexpr std::size_t kMostJoined = 400;

// No browser loads anything for the page, whatever it contains (Content Security Policy Level 3).
constexpr const char* kPolicy =
    "default-src 'none'; style-src 'unsafe-inline'; base-uri 'none'; form-action 'none'";

// Lines and links of a finding light up with it, and it with them.
std::string JoiningRules(const PageData& page) {
    std::size_t count = 0;
    for (const PageExchange& exchange : page.exchanges) {
        for (const std::optional<PageText>* const text : {&exchange.offer, &exchange.answer}) {
            count += *text ? (*text)->findings.size() : 0;
        }
    }
    std::string rules;
    for (std::size_t i = 1; i <= count && i <= kMostJoined; ++i) {
        const std::string anchor = ".f" + std::to_string(i);
        rules.append("main:has(")
            .append(anchor)
            .append(":is(:hover, :focus-within, :target)) ")
            .append(anchor);
        rules += " { outline: 2px solid var(--join); background: var(--lit); }\n";
    }
    return rules;
}

void WriteHead(Markup& out, const PageData& page) {
    out.Open("head").Void("meta", {{"charset", "utf-8"}});
    out.Void("meta", {{"http-equiv", "Content-Security-Policy"}, {"content", kPolicy}});
    out.Void("meta", {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}});
    out.Void("meta", {{"name", "color-scheme"}, {"content", "light dark"}});
    out.Void("meta", {{"name", "referrer"}, {"content", "no-referrer"}});
    out.Element("title", page.title + " explained");
    out.Style(kPageStyle + JoiningRules(page));
    out.Close();
}

// The answer comes first: what its reader starts with is what the call has.
void WriteVerdict(Markup& out, const PageExchange& exchange) {
    for (const std::optional<PageText>* const text : {&exchange.answer, &exchange.offer}) {
        if (*text && (*text)->isRead) {
            out.Element("h3", {{"class", "reading"}}, (*text)->reading);
            WriteStreams(out, **text);
        }
    }
}

void WriteText(Markup& out, const PageText& text) {
    out.Open("section", {{"id", "t" + std::to_string(text.number)}, {"class", "text"}});
    out.Element("h3", text.title);
    if (!text.origin.empty()) {
        out.Element("p", {{"class", "origin"}}, text.origin);
    }
    WriteLines(out, text);
    out.Close();
}

// The parts of an exchange below its verdict: texts side by side, findings, formats.
void WriteDetails(Markup& out, const PageExchange& exchange) {
    out.Open("div", {{"class", "texts"}});
    for (const std::optional<PageText>* const text : {&exchange.offer, &exchange.answer}) {
        if (*text) {
            WriteText(out, **text);
        }
    }
    out.Close();
    for (const std::optional<PageText>* const text : {&exchange.offer, &exchange.answer}) {
        if (*text && (*text)->isRead) {
            out.Element("h2", "Findings: " + (*text)->title);
            WriteFindings(out, **text);
        }
    }
    for (const std::optional<PageText>* const text : {&exchange.offer, &exchange.answer}) {
        if (*text && (*text)->isRead) {
            out.Element("h2", "Formats and codecs: " + (*text)->title);
            WriteWhyNot(out, **text);
        }
    }
}

// The offers that a final response refused, as steps counted from 1. An answer in an earlier response, such
// as 183, does not save them.
std::set<std::size_t> RefusedOffers(const Call* call) {
    std::set<std::size_t> refused;
    for (std::size_t i = 0; call != nullptr && i < call->steps.size(); ++i) {
        const Step& step = call->steps[i];
        if (step.kind == StepKind::Refusal && step.partner) {
            refused.insert(*step.partner + 1);
        }
    }
    return refused;
}

// The exchange whose verdict is that of the call: the last one that was agreed. None: no exchange was.
std::optional<std::size_t> LastAgreed(const PageData& page) {
    const std::set<std::size_t> refused = RefusedOffers(page.call);
    std::optional<std::size_t> last;
    for (std::size_t i = 0; i < page.exchanges.size(); ++i) {
        const PageExchange& exchange = page.exchanges[i];
        if (exchange.offer && exchange.answer && refused.count(exchange.offer->step) == 0) {
            last = i;
        }
    }
    return last;
}

void WriteVerdictOfCall(Markup& out, const PageData& page, std::optional<std::size_t> last) {
    out.Open("section", {{"id", "verdict"}});
    if (last) {
        const std::string& title = page.exchanges[*last].title;
        out.Element("h2", title.empty() ? "Streams" : "Streams after " + title);
        WriteVerdict(out, page.exchanges[*last]);
    } else {
        out.Element("h2", "Streams");
        out.Element("p", "No offer and answer are agreed at the end of this call, so no stream runs.");
    }
    out.Close();
}

void WriteMain(Markup& out, const PageData& page) {
    const std::optional<std::size_t> last = LastAgreed(page);
    if (!page.exchanges.empty()) {
        WriteVerdictOfCall(out, page, last);
    }
    if (page.call != nullptr) {
        WriteTimeline(out, page);
    }
    for (std::size_t i = 0; i < page.exchanges.size(); ++i) {
        const PageExchange& exchange = page.exchanges[i];
        out.Open("section", {{"class", "exchange"}});
        out.Element("h2",
                    exchange.title.empty() ? "Offer and answer" : "Offer and answer: " + exchange.title);
        if (i != last) {
            WriteVerdict(out, exchange);
        }
        WriteDetails(out, exchange);
        out.Close();
    }
}

} // namespace

std::string FindingAnchor(const PageText& text, std::size_t index) {
    return "f" + std::to_string(text.firstFinding + index);
}

std::string LineAnchor(const PageText& text, std::size_t number) {
    return "t" + std::to_string(text.number) + "-" + std::to_string(number);
}

std::string CountOf(std::size_t count, const char* noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string PageOf(const PageData& page) {
    Markup out;
    out.Doctype();
    out.Open("html", {{"lang", "en"}});
    WriteHead(out, page);
    out.Open("body", {{"id", "top"}});
    out.Open("header").Element("h1", page.title);
    for (const std::string& note : page.notes) {
        out.Element("p", note);
    }
    out.Close().Open("main");
    WriteMain(out, page);
    out.Close().Open("footer");
    out.Element("p",
                "Written by cmsdp explain. Keys are shown as ***, bytes outside printable ASCII as \\xNN.");
    return out.Take();
}

} // namespace cmsdp
