#include "publish/page_parts.h"

namespace tarvendo {

// Colours stand at the top, for bright and dark screens; each pair of text and ground has a
// contrast of 4.5 at least. No text is smaller than 12 pixels. On a screen each row of a table is
// whole pixels high, for the lines below a cell that stays in view and below its neighbours are
// rounded apart.
const char* const kPageStyle = R"css(
:root{color-scheme:light dark;--ink:#1b2430;--soft:#556070;--line:#d8dde5;--paper:#fff;--ground:#f6f7f9;
--accent:#1b5e8c;--w:#d8ecdf;--d:#eceef1;--l:#f7e0db;--x:#c9d0d9;
--c1:#0b68ad;--c2:#bf4a06;--c3:#007a58;--c4:#a5367f;--c5:#7a6000;--c6:#5a4fcf;--c7:#00757f;--c8:#8f3b3b}
@media(prefers-color-scheme:dark){:root{--ink:#e4e8ee;--soft:#a2adbb;--line:#343d49;--paper:#151a21;--ground:#0f1318;
--accent:#86bfe6;--w:#1c4230;--d:#29313b;--l:#4c2a25;--x:#3a4552;
--c1:#6bb5ec;--c2:#f08a4b;--c3:#4cc79c;--c4:#e58bc4;--c5:#d3b545;--c6:#a9a2f5;--c7:#4fc3cd;--c8:#e39a9a}}
*{box-sizing:border-box}
html{scroll-behavior:smooth;-webkit-text-size-adjust:100%}
body{margin:0;background:var(--ground);color:var(--ink);font:16px/1.5 system-ui,-apple-system,"Segoe UI",Roboto,
"Noto Sans","DejaVu Sans",sans-serif;font-variant-numeric:tabular-nums}
header,main,footer{max-width:80rem;margin:0 auto;padding:0 1.25rem}
header{padding-top:2rem}
h1{font-size:clamp(1.5rem,1.1rem + 2vw,2.25rem);line-height:1.2;letter-spacing:-.015em;margin:0 0 1rem}
h1,h2,dd,p,summary,li,tbody th,td.text,bdi{overflow-wrap:anywhere}
h2{font-size:1.25rem;line-height:1.3;margin:0 0 .25rem;letter-spacing:-.01em}
section{background:var(--paper);border:1px solid var(--line);border-radius:10px;padding:1.25rem;margin:1.25rem 0}
p{margin:.25rem 0 .75rem}
.note{color:var(--soft);font-size:.875rem;max-width:70ch}
small{font-size:.8125rem;color:var(--soft);font-weight:400}
a{color:var(--accent);text-underline-offset:.15em}
a:focus-visible,button:focus-visible,summary:focus-visible,.scroll:focus-visible,td:focus-visible,input:focus-visible{
outline:2px solid var(--accent);outline-offset:2px}
td:focus-visible,.scroll:focus-visible{outline-offset:-2px}
dl{display:flex;flex-wrap:wrap;gap:.75rem 2rem;margin:0 0 1.25rem}
dt{font-size:.8125rem;color:var(--soft)}
dd{margin:0;font-weight:600}
.bar{height:8px;border-radius:4px;background:var(--x);overflow:hidden}
.bar i{display:block;height:100%;background:var(--accent)}
.progress p{margin:.35rem 0 .5rem;font-size:.9375rem}
.live{font-size:.9375rem;color:var(--soft);display:flex;flex-wrap:wrap;gap:.25rem 1rem;margin:0 0 .75rem}
.live label{color:var(--ink);display:flex;gap:.4rem;align-items:center}
nav{display:flex;flex-wrap:wrap;gap:.5rem 1.25rem;margin:.75rem 0 .25rem}
nav a{text-decoration:none;font-weight:600;padding:.15rem 0}
nav a:hover{text-decoration:underline}
.files{font-size:.875rem;color:var(--soft)}
.files a{margin-left:.6rem}
.scroll{overflow:auto;max-height:85vh;width:fit-content;max-width:100%;border:1px solid var(--line);border-radius:6px;
position:relative}
table{border-collapse:separate;border-spacing:0;font-size:.9375rem;line-height:1.25rem}
th,td{padding:.375rem .7rem;text-align:right;border-bottom:1px solid var(--line);background:var(--paper);
vertical-align:top;white-space:nowrap}
tbody tr:last-child>*{border-bottom:0}
tbody tr:hover>*{background:var(--ground)}
thead th{position:sticky;top:0;z-index:2;font-size:.8125rem;font-weight:600;color:var(--soft);vertical-align:bottom;
border-bottom:1px solid var(--x)}
tbody th,td.text,.bye td{white-space:normal}
tbody th{font-weight:600;text-align:left;min-width:9rem;max-width:24rem}
tbody th,thead th:nth-child(2){position:sticky;left:0;z-index:1;text-align:left}
thead th:nth-child(2){z-index:3}
.text{text-align:left}
td.text{min-width:8rem;max-width:24rem}
table.games{table-layout:fixed;width:100%;min-width:54rem}
.round .scroll{width:auto}
ul.games{list-style:none;margin:0;padding:0;font-size:.9375rem}
ul.games li{border-bottom:1px solid var(--line);padding:.2rem 0}
.games th,.games td,.games tbody th{min-width:0;max-width:none}
.games th:nth-child(1){width:4.5rem}.games th:nth-child(3){width:5rem}.games th:nth-child(5){width:28%}
.games th:nth-child(6){width:4.5rem}.games th:nth-child(7),.games th:nth-child(8){width:6rem}
.none{color:var(--soft)}
abbr{text-decoration:none}
th button{all:unset;cursor:pointer;color:inherit;padding:0 0 0 .1rem}
th button:hover{color:var(--ink);text-decoration:underline}
th button::after{content:"\2195";opacity:.55;margin-left:.25rem;font-size:.75rem}
th[aria-sort=ascending] button::after{content:"\25B2";opacity:1}
th[aria-sort=descending] button::after{content:"\25BC";opacity:1}
th[aria-sort] button{color:var(--ink)}
.bye>*{color:var(--soft);font-weight:400}
.bye td:last-child{text-align:left}
.cross th,.cross td{padding:.3125rem .45rem}
.cross tbody th{min-width:13rem}
.cross td{text-align:center;min-width:2.2rem}
.cross thead th{text-align:center}
.cross thead th:nth-child(2){text-align:left}
.cross thead a,.swiss td a{color:inherit;text-decoration:none}
.cross thead a:hover,.swiss td a:hover{text-decoration:underline}
.swiss td a{color:var(--soft);font-size:.8125rem;line-height:1}
.cross td.w,.cross tr:hover td.w{background:var(--w)}
.cross td.d,.cross tr:hover td.d{background:var(--d)}
.cross td.l,.cross tr:hover td.l{background:var(--l)}
.cross td.x,.cross tr:hover td.x{background:var(--x)}
.swiss td.w a,.swiss td.d a,.swiss td.l a{color:var(--ink)}
tr:target>*{border-bottom:2px solid var(--accent)}
tr{scroll-margin-top:3rem}
td[data-r]{position:relative}
td[data-r]:hover::after,td[data-r]:focus::after{content:attr(data-r);position:absolute;z-index:4;right:0;top:100%;
background:var(--ink);color:var(--paper);font-size:.8125rem;padding:.25rem .5rem;border-radius:4px;white-space:pre}
td[data-r]:nth-child(-n+8):hover::after,td[data-r]:nth-child(-n+8):focus::after{right:auto;left:0}
summary{cursor:pointer;font-weight:600;padding:.4rem 0}
details[open]>summary{margin-bottom:.25rem}
.elo>div{display:grid;grid-template-columns:minmax(8rem,15rem) minmax(0,1fr) 7.5rem;gap:0 1rem;align-items:center;
font-size:.875rem}
.elo>div>span{padding:.15rem 0}
.elo>div>span:first-child,.legend span{overflow-wrap:anywhere;min-width:0}
.elo>div>span:last-child{text-align:right;white-space:nowrap}
.elo>div>svg{display:block;width:100%;height:26px;overflow:visible}
.axis .marks{position:relative;height:1.5rem;color:var(--soft);font-size:.8125rem}
.marks span{position:absolute;transform:translateX(-50%);white-space:nowrap}
.grid{stroke:var(--line);stroke-width:1;fill:none}
.mean{stroke:var(--soft);stroke-width:1}
.error{stroke:var(--accent);stroke-width:2}
.elo circle{fill:var(--accent)}
.bound{stroke:var(--accent);stroke-width:2;fill:none}
.points{display:grid;grid-template-columns:2.25rem 1fr;grid-template-rows:clamp(12rem,32vw,21rem) 1.75rem;
margin:1rem 1rem 0 0;font-size:.8125rem;color:var(--soft)}
.points svg{width:100%;height:100%;overflow:visible}
.points .grid{vector-effect:non-scaling-stroke}
.side,.points .marks{position:relative}
.side span{position:absolute;right:.6rem;transform:translateY(50%)}
.points .marks{grid-column:2;top:.4rem}
.line{fill:none;stroke-width:2.25;stroke-linejoin:round;vector-effect:non-scaling-stroke}
.c1{stroke:var(--c1)}.c2{stroke:var(--c2);stroke-dasharray:9 3}.c3{stroke:var(--c3);stroke-dasharray:3 3}
.c4{stroke:var(--c4);stroke-dasharray:12 3 3 3}.c5{stroke:var(--c5)}.c6{stroke:var(--c6);stroke-dasharray:9 3}
.c7{stroke:var(--c7);stroke-dasharray:3 3}.c8{stroke:var(--c8);stroke-dasharray:12 3 3 3}
.legend{list-style:none;margin:.75rem 0 0;padding:0;display:flex;flex-wrap:wrap;gap:.35rem 1.5rem;font-size:.875rem}
.legend li{display:flex;gap:.5rem;align-items:center}
.legend svg{flex:none}
footer{color:var(--soft);font-size:.875rem;padding-bottom:2rem}
.paper{display:none}
.hidden{position:absolute;width:1px;height:1px;overflow:hidden;clip-path:inset(50%);white-space:nowrap}
@media(max-width:40rem){
header,main,footer{padding-left:.75rem;padding-right:.75rem}
section{padding:1rem .75rem}
th,td{padding:.375rem .5rem}
tbody th,.cross tbody th{min-width:7rem;max-width:9.5rem}
.games{min-width:46rem}.games tbody th{position:static}
td.text{max-width:12rem}
dl{display:grid;grid-template-columns:1fr 1fr;gap:.6rem 1rem}
.elo>div{grid-template-columns:minmax(0,1fr) auto}
.elo>div>svg,.elo .marks{grid-column:1/-1;order:3}
.elo>.axis>span{display:none}
.elo>div{padding-left:1.2rem;padding-right:1.2rem}
}
@media print{
:root{--ground:#fff}
body{font-size:10pt}
nav,.files,.live,.screen,.round:not([open]),th button::after{display:none}
.paper{display:block}
section{border:0;padding:0;break-inside:auto}
.scroll{overflow:visible;max-height:none;max-width:none;border:0}
table{font-size:8.5pt;line-height:1.35}
th,td{padding:.15rem .35rem}
thead th,tbody th{position:static}
tr{break-inside:avoid}
.wide{font-size:6pt}.wide.cross th,.wide.cross td{padding:1pt;min-width:0}.wide thead th{font-size:6pt}
.wide.cross tbody th{min-width:0;max-width:9rem}.games{min-width:0}
.cross td,.bar,.bar i{print-color-adjust:exact;-webkit-print-color-adjust:exact}
@page{size:A4 landscape;margin:12mm}
}
@media(prefers-reduced-motion:reduce){html{scroll-behavior:auto}}
)css";

}  // namespace tarvendo
