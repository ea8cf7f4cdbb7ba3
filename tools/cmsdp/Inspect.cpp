// cmsdp inspect: what would the media engine start with, and why without the rest?
//
// Tests: tests/tool/inspect.cases
#include "RemoteText.h"
#include "ReportJson.h"
#include "ReportTable.h"
#include "Verbs.h"

namespace cmsdp {

Outcome RunInspect(const CommandLine& line, const Screen& screen) {
    const Capabilities side = SideOf(line.local);
    Outcome outcome;
    const Draft remote = ReadRemoteText(line.remote, outcome.notes);
    SDPHandler handler;
    Prepare(handler, side);
    if (line.offered) {
        handler.GetLocalSDP(); // the offer that the text answers
    }
    Report report = ReadInto(handler, side, remote, line.offered);
    JudgeAnswer(report, side, remote, line.offered);
    report.inputNotes = outcome.notes;

    Secrets secrets(line.showSecrets);
    outcome.text =
        line.json ? InspectJson(report, secrets)
                  : RenderTable({}, ReportBlocks(report, secrets), CellWidth(screen.width, 1), screen.colour);
    Judge(outcome, report, line, secrets);
    NoteHidden(outcome, secrets);
    return outcome;
}

} // namespace cmsdp
