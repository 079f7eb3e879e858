#include "cli/report_style.h"

namespace kova_command {

std::string_view report_style() {
    return R"css(
:root {
  color-scheme: light dark;
  --page: #f3f5f8; --sheet: #fff; --text: #18222e; --quiet: #4d5b6a; --line: #d3dae3;
  --soft: #f0f3f7; --good: #17683a; --warning: #855000; --error: #b3221a; --note: #1b5a9e;
  --pane-blue: #0000ff; --pane-red: #c00000; --pane-green: #006b00; --pane-ground: #1f3fbf;
}
@media (prefers-color-scheme: dark) {
  :root {
    --page: #0f141b; --sheet: #19212b; --text: #e5ebf2; --quiet: #a8b5c3; --line: #344253;
    --soft: #202a36; --good: #7ad59e; --warning: #f2c163; --error: #ff9d95; --note: #93c4ff;
    --pane-blue: #a3bcff; --pane-red: #ff9d95; --pane-green: #7ad59e; --pane-ground: #2c4bc4;
  }
}
* { box-sizing: border-box; }
body { margin: 0; background: var(--page); color: var(--text);
  font: 16px/1.5 system-ui, "Segoe UI", "Helvetica Neue", "DejaVu Sans", Arial, sans-serif; }
header, main, footer { max-width: 68rem; margin-inline: auto; padding-inline: 1.25rem; }
header { padding-block: 2.5rem 1.25rem; }
main { display: grid; gap: 1.25rem; grid-template-columns: minmax(0, 1fr); }
footer { padding-block: 1.5rem 2.5rem; color: var(--quiet); font-size: .875rem; }
h1, h2, h3, p, pre { margin: 0; }
h1, h2, h3, p { overflow-wrap: anywhere; }
h1 { font-size: 2rem; line-height: 1.2; letter-spacing: -.01em; }
h1 .kicker { display: block; margin-bottom: .35rem; color: var(--quiet); font-size: .9rem;
  font-weight: 600; letter-spacing: .03em; }
h2 { margin-bottom: .9rem; font-size: 1.25rem; line-height: 1.3; }
h3 { font-size: 1rem; line-height: 1.4; }
section { padding: 1.4rem 1.5rem 1.5rem; background: var(--sheet); border: 1px solid var(--line);
  border-radius: .75rem; }
.good { --tone: var(--good); } .warning { --tone: var(--warning); }
.error { --tone: var(--error); } .note { --tone: var(--note); } .quiet { --tone: var(--quiet); }
.badge { display: inline-block; padding: .05rem .55rem; border: 1.5px solid var(--tone);
  border-radius: 1rem; color: var(--tone); font-size: .875rem; font-weight: 600;
  white-space: nowrap; }
.verdict { display: flex; flex-wrap: wrap; gap: .5rem .9rem; align-items: center;
  margin-top: 1rem; }
.verdict .badge { padding: .2rem .85rem; font-size: 1rem; }
dl { display: grid; grid-template-columns: max-content minmax(0, 1fr); gap: .45rem 1.75rem;
  margin: 0; }
dt { color: var(--quiet); }
dd { margin: 0; overflow-wrap: anywhere; }
.scroll { overflow-x: auto; }
table { border-collapse: collapse; }
.list { width: 100%; }
caption { padding-bottom: .6rem; color: var(--quiet); text-align: left; }
.list th, .list td { padding: .45rem .75rem; border-bottom: 1px solid var(--line);
  text-align: left; vertical-align: top; overflow-wrap: break-word; }
.list tbody th { font-weight: 500; }
.list thead th { border-bottom: 2px solid var(--line); color: var(--quiet); font-size: .875rem; }
.list .number { width: 1%; text-align: right; font-variant-numeric: tabular-nums;
  white-space: nowrap; }
.names { columns: 15rem; column-gap: 2rem; margin: 0; padding-left: 2.2rem; }
.names li { break-inside: avoid; overflow-wrap: anywhere; }
.names li::marker { color: var(--quiet); font-variant-numeric: tabular-nums; }
article { padding: 1rem 1.1rem; border: 1px solid var(--line); border-left: .3rem solid var(--tone);
  border-radius: .5rem; }
article + article { margin-top: 1rem; }
article > * + *, article > pre { margin-top: .65rem; }
.place { color: var(--quiet); }
.heading { display: flex; gap: .7rem; align-items: baseline; }
.help { padding-left: .8rem; border-left: 2px solid var(--note); }
pre { padding: .7rem .9rem; overflow-x: auto; background: var(--soft);
  border-radius: .4rem; direction: ltr; unicode-bidi: bidi-override; white-space: pre;
  font: .875rem/1.45 ui-monospace, "Cascadia Mono", Menlo, Consolas, "DejaVu Sans Mono", monospace; }
pre .gutter { color: var(--quiet); }
pre .mark { color: var(--tone); font-weight: 700; }
.places { max-height: 22rem; overflow: auto; }
.pane { overflow-x: auto; padding: 1rem; border: 1px dashed var(--line); border-radius: .5rem; }
.about { margin-bottom: .9rem; color: var(--quiet); }
.pane table { width: auto; max-width: 100%; margin-block: .6rem; }
.pane td, .pane th { padding: .25rem .5rem; border: 1px solid var(--line);
  overflow-wrap: anywhere; }
.pane .center { text-align: center; }
.pane .center > table { margin-inline: auto; }
.pane .big { font-size: 1.1em; }
.pane ul { margin: .6rem 0; padding-left: 1.5rem; }
.ink-blue { color: var(--pane-blue); } .ink-red { color: var(--pane-red); }
.ink-green { color: var(--pane-green); } .ink-white { color: #fff; }
.ink-black, .legible { color: var(--text); }
.legible { background: var(--sheet); }
.ground-blue { background: var(--pane-ground); }
:focus-visible { outline: 3px solid var(--note); outline-offset: 2px; }
@media (max-width: 34rem) {
  dl { grid-template-columns: minmax(0, 1fr); gap: 0; }
  dd { margin-bottom: .6rem; }
  section { padding: 1rem; }
}
@media print {
  :root {
    color-scheme: light;
    --page: #fff; --sheet: #fff; --text: #000; --quiet: #333; --line: #888; --soft: #fff;
    --good: #17683a; --warning: #855000; --error: #b3221a; --note: #1b5a9e;
    --pane-blue: #0000ff; --pane-red: #c00000; --pane-green: #006b00; --pane-ground: #fff;
  }
  @page { margin: 18mm 15mm; }
  body { font-size: 10pt; }
  header, main, footer { max-width: none; padding-inline: 0; }
  header { padding-top: 0; }
  main { display: block; }
  section { padding: 0; border: 0; margin-top: 1.6rem; }
  article, tr, pre, dl > * { break-inside: avoid; }
  h2, h3, caption { break-after: avoid; }
  thead { display: table-header-group; }
  .places { max-height: none; }
  .scroll, .places, .pane, pre { overflow: visible; }
  pre { border: 1px solid var(--line); font-size: 7.5pt; }
  .pane { padding: 0; border: 0; }
  .ink-white { color: #000; }
  .legible { background: none; }
}
)css";
}

} // namespace kova_command
