// Stage: none; how the page looks.
// Input: none. Output: rules of style.
// Touches nothing.
// Colours are chosen for a contrast of 4.5 to 1 in both themes (WCAG 2.2, 1.4.3); scripts/page measures it.
// Test: tests/tool/PageTest.cpp
#include "Page.h"

namespace cmsdp {

const char* const kPageStyle = R"(:root {
  --ink: #1b1f24; --paper: #ffffff; --soft: #57606a; --rule: #d0d7de; --card: #f6f8fa;
  --good: #116329; --warning: #7d4e00; --error: #a40e26; --note: #0550ae; --join: #0550ae; --lit: #fff3c4;
}
@media (prefers-color-scheme: dark) {
  :root {
    --ink: #e6edf3; --paper: #0d1117; --soft: #a0a9b4; --rule: #3d444d; --card: #161b22;
    --good: #56d364; --warning: #e3b341; --error: #ff938a; --note: #79c0ff; --join: #79c0ff; --lit: #33290a;
  }
}
* { box-sizing: border-box; }
body { margin: 0 auto; padding: 1rem; max-width: 90rem; color: var(--ink); background: var(--paper);
  font: 1rem/1.45 system-ui, sans-serif; overflow-wrap: anywhere; }
h1 { font-size: 1.5rem; margin: 0 0 .5rem; }
h2 { font-size: 1.2rem; margin: 1.5rem 0 .5rem; border-bottom: 1px solid var(--rule); }
h3 { font-size: 1rem; margin: .25rem 0; }
h3.reading { margin: 1rem 0 .5rem; }
p { margin: .25rem 0; }
a { color: var(--note); padding: .15rem; display: inline-block; min-height: 1.5rem; min-width: 1.5rem; }
a.error, .error .state, .down .state { color: var(--error); }
a.warning, .warning .state { color: var(--warning); }
a.note, .note .state { color: var(--note); }
.up .state { color: var(--good); }
:focus-visible { outline: 2px solid var(--join); outline-offset: 1px; }
code { font: .9rem/1.4 ui-monospace, monospace; white-space: pre-wrap; }
.origin, .number, .verdict, .sdp p, footer { color: var(--soft); font-size: .85rem; }
.cards { display: grid; gap: .75rem; grid-template-columns: repeat(auto-fit, minmax(min(18rem, 100%), 1fr)); }
.card, .finding { background: var(--card); border: 1px solid var(--rule); border-left: .35rem solid var(--rule);
  border-radius: .35rem; padding: .5rem .75rem; }
.whole { grid-column: 1 / -1; }
.up { border-left-color: var(--good); }
.down, .finding.error { border-left-color: var(--error); }
.finding.warning { border-left-color: var(--warning); }
.finding.note { border-left-color: var(--note); }
.findings { display: grid; gap: .5rem; }
.finding:target, .sdp li:target { outline: 2px solid var(--join); background: var(--lit); }
dl { margin: .25rem 0; }
dl div { display: grid; grid-template-columns: 5.5rem 1fr; gap: .5rem; }
dt { color: var(--soft); }
dd { margin: 0; }
dd p { margin: 0; }
.arrows { display: block; width: 100%; max-width: 20rem; }
svg text { fill: var(--ink); font: 11px system-ui, sans-serif; }
svg .time { fill: var(--soft); font-size: 10px; }
svg .side { font-weight: bold; }
.flow { stroke: var(--good); stroke-width: 2; }
.head { fill: var(--good); }
.still { stroke: var(--soft); stroke-dasharray: 3 5; }
.life { stroke: var(--rule); stroke-width: 2; }
.timeline { display: block; width: 100%; max-width: 44rem; }
.timeline .error .flow { stroke: var(--error); }
.timeline .error .head { fill: var(--error); }
.timeline .warning .flow { stroke: var(--warning); }
.timeline .warning .head { fill: var(--warning); }
.timeline .note .flow { stroke: var(--note); }
.timeline .note .head { fill: var(--note); }
.timeline .plain .flow { stroke: var(--soft); }
.timeline .plain .head { fill: var(--soft); }
.timeline a:focus-visible text { fill: var(--join); text-decoration: underline; }
.steps { list-style: none; padding: 0; }
.steps > li { border-left: .35rem solid var(--rule); padding: .25rem .75rem; margin: .35rem 0; }
.steps > .error { border-left-color: var(--error); }
.steps > .warning { border-left-color: var(--warning); }
.steps > .note { border-left-color: var(--note); }
.steps > .good { border-left-color: var(--good); }
.steps > :target { outline: 2px solid var(--join); }
.texts { display: grid; gap: 1rem; margin-top: .75rem;
  grid-template-columns: repeat(auto-fit, minmax(min(24rem, 100%), 1fr)); }
.text { min-width: 0; }
.sdp { list-style: none; margin: 0; padding: 0; }
.sdp li { border-left: .35rem solid var(--rule); padding: .1rem .5rem; margin: 1px 0; }
.sdp p { margin: 0 0 0 1.5rem; }
.sdp .used, .sdp .agrees { border-left-color: var(--good); }
.sdp .overridden, .sdp .tolerated { border-left-color: var(--warning); }
.sdp .misread, .sdp .dropped, .sdp .joined { border-left-color: var(--error); }
.used .verdict, .agrees .verdict { color: var(--good); }
.overridden .verdict, .tolerated .verdict { color: var(--warning); }
.misread .verdict, .dropped .verdict, .joined .verdict { color: var(--error); }
table { border-collapse: collapse; width: 100%; font-size: .9rem; }
th, td { text-align: left; vertical-align: top; padding: .15rem .4rem; border-bottom: 1px solid var(--rule); }
.match td { font-weight: bold; }
footer { margin-top: 2rem; border-top: 1px solid var(--rule); }
@media print {
  body { max-width: none; padding: 0; font-size: 10pt; }
  .card, .finding, .sdp li, tr { break-inside: avoid; }
  * { print-color-adjust: exact; }
}
)";

} // namespace cmsdp
