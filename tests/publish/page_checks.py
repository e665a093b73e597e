"""What is asked of the report's page in a browser: each function gives the faults that it finds, as sentences."""

import json
import time

# What the page may be made of.
ELEMENTS = {
    "html", "head", "meta", "link", "noscript", "title", "style", "body", "header", "h1", "h2", "bdi", "dl", "div", "dt",
    "dd", "p", "span", "nav", "a", "main", "section", "table", "caption", "thead", "tbody", "tr", "th", "td", "b", "small",
    "abbr", "svg", "path", "line", "circle", "ul", "li", "details", "summary", "footer", "script", "i", "button", "label",
    "input"}

SMALLEST_TEXT = 12  # CSS pixels

# Every text that can be seen: how large it is, and whether anything of it is cut off. What is in a box that scrolls can be
# scrolled to; it must lie within its cell there. Texts for the ear alone, and in folds, are not looked at.
TEXTS = """(() => {
  const faults = [];
  const width = document.documentElement.clientWidth;
  if (document.documentElement.scrollWidth > width + 1) {
    faults.push(`the page is ${document.documentElement.scrollWidth} wide on a screen of ${width}`);
  }
  const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
  const range = document.createRange();
  for (let node = walker.nextNode(); node; node = walker.nextNode()) {
    const parent = node.parentElement;
    if (!node.data.trim() || parent.closest('script,style,noscript,.hidden')) continue;
    range.selectNodeContents(node);
    const box = range.getBoundingClientRect();
    if (box.width === 0 && box.height === 0) continue;
    const size = parseFloat(getComputedStyle(parent).fontSize);
    const paper = matchMedia('print').matches;
    if (size < %(smallest)d && !paper) faults.push(`'${node.data.trim().slice(0, 40)}' is ${size} pixels high`);
    const cell = parent.closest('td,th');
    const frame = cell || (parent.closest('.scroll') ? null : document.body);
    if (frame === null) continue;
    const bounds = cell ? cell.getBoundingClientRect() : {left: 0, right: width};
    if (box.left < bounds.left - 1 || box.right > bounds.right + 1) {
      faults.push(`'${node.data.trim().slice(0, 40)}' goes from ${box.left} to ${box.right}, ` +
                  `its place from ${bounds.left} to ${bounds.right}`);
    }
    for (let outer = parent; outer && outer !== document.body; outer = outer.parentElement) {
      const style = getComputedStyle(outer);
      if ((style.overflowX === 'hidden' || style.overflowX === 'clip') && outer.scrollWidth > outer.clientWidth + 1) {
        faults.push(`'${node.data.trim().slice(0, 40)}' is cut off`);
      }
    }
  }
  return faults.slice(0, 10);
})()""" % {"smallest": SMALLEST_TEXT}

NAMES = """Array.from(document.querySelectorAll('#standings tbody th'), cell => cell.textContent)"""


def column(number):
    return f"Array.from(document.querySelectorAll('#standings tbody tr:not(.bye)'), row => row.cells[{number}].textContent)"


def in_order_of_rank(data):
    return [player["name"] for player in sorted(
        data["participants"], key=lambda player: (player["bye"], player["rank"] or 0))]


def read_everywhere(page, data):
    """The page says what the data say, as text, all of it large enough and whole."""
    faults = []
    for what, expected, found in (
            ("title", data["name"], page.evaluate("document.title")),
            ("heading", data["name"], page.evaluate("document.querySelector('h1').textContent")),
            ("names", in_order_of_rank(data), page.evaluate(NAMES)),
            ("headings of parts", 6, page.evaluate("document.querySelectorAll('h2').length")),
            ("scripts", 1, page.evaluate("document.scripts.length")),
            ("elements that no report has", [], sorted(set(page.evaluate(
                "Array.from(new Set(Array.from(document.querySelectorAll('*'), e => e.localName)))")) - ELEMENTS)),
            ("handlers in attributes", 0, page.evaluate(
                "Array.from(document.querySelectorAll('*')).filter("
                "e => Array.from(e.attributes).some(a => a.name.startsWith('on'))).length")),
            ("games listed", len(data["games"]), page.evaluate("document.querySelectorAll('.games tbody tr').length")),
            ("what was loaded beside the page", [], page.evaluate(
                "performance.getEntriesByType('resource').map(e => e.name)")),
            ("complaints of the browser", [], page.complaints())):
        if expected != found:
            faults.append(f"{what}: expected {expected!r}, found {found!r}")
    return faults + page.evaluate(TEXTS)


def reads_well_without_script(page, data):
    faults = []
    if page.evaluate("document.querySelectorAll('button,input').length"):
        faults.append("there is something to click that does nothing")
    left = data["counts"]["games"] > data["counts"]["played"]
    refresh = page.evaluate("!!document.querySelector('meta[http-equiv=refresh]')")
    if refresh != left:
        faults.append(f"loads itself anew: {refresh}, games left: {left}")
    says_so = page.evaluate("document.body.innerText.includes('loads itself anew')")
    if says_so != left:
        faults.append(f"says that it loads itself anew: {says_so}, games left: {left}")
    folded = page.evaluate("!!document.querySelector('.round:not([open])')")
    if page.evaluate("document.body.textContent.includes('are not printed')") != folded:
        faults.append(f"does not say rightly what is not printed; rounds are folded: {folded}")
    return faults


def lines_up(page):
    """A cell that stays in view is rounded on its own: only rows of whole pixels have their lines in one line."""
    heights = page.evaluate("Array.from(document.querySelectorAll('table'), table => Array.from(table.tBodies[0].rows, "
                            "row => row.getBoundingClientRect().height)).flat().filter(height => height % 1 !== 0)")
    return [f"{len(heights)} rows are no whole pixels high, such as {heights[0]}"] if heights else []


ON_PAPER = """Array.from(document.querySelectorAll('.live,.screen,nav,.round:not([open])'))
  .filter(element => element.getClientRects().length).length"""


def is_of_use_on_paper(page, data):
    """Nothing that can only be clicked or pointed at, and no heading of what is folded away; but all games."""
    faults = []
    if page.evaluate(ON_PAPER):
        faults.append("there are parts that are of no use on paper")
    page.evaluate("dispatchEvent(new Event('beforeprint'))")
    rows = page.evaluate("Array.from(document.querySelectorAll('.games tbody tr'))"
                         ".filter(row => row.getClientRects().length).length")
    if rows != len(data["games"]):
        faults.append(f"{rows} games are printed")
    return faults


def stop_loading_anew(page):
    """On a slow machine a look takes longer than a page waits."""
    page.evaluate("document.querySelectorAll('.live input').forEach(box => { if (box.checked) box.click(); })")


def has_no_serious_fault(page, axe, data):
    stop_loading_anew(page)
    # Folded parts are part of the page too; those of large tourneys are like those of small ones.
    is_large = len(data["participants"]) > 40
    if not is_large:
        page.evaluate("document.querySelectorAll('details').forEach(fold => { fold.open = true; })")
    rules = {"color-contrast": {"enabled": not is_large}}
    page.evaluate(axe + "; 1")
    found = json.loads(page.evaluate(
        f"axe.run(document, {{resultTypes: ['violations'], rules: {json.dumps(rules)}}})"
        ".then(result => JSON.stringify(result.violations.map("
        "v => ({id: v.id, impact: v.impact, help: v.help, where: v.nodes.slice(0, 3).map(n => n.html.slice(0, 120))}))))"))
    return [f"axe: {fault['impact']}: {fault['id']}, {fault['help']}: {fault['where']}"
            for fault in found if fault["impact"] in ("serious", "critical")]


def is_dark(page):
    colours = page.evaluate("(style => [style.backgroundColor, style.color])(getComputedStyle(document.body))")
    ground, ink = (sum(map(int, colour[4:-1].split(",")[:3])) for colour in colours)
    return [] if ground < 120 and ink > 600 else [f"not dark: {colours}"]


def header_button(number):
    return f"#standings thead th:nth-child({number}) button"


def sorts_by_a_click(page, data):
    faults = []

    def same(what, expected, found):
        if expected != found:
            faults.append(f"{what}: expected {expected!r}, found {found!r}")

    def sorted_as():
        return page.evaluate("Array.from(document.querySelectorAll('#standings thead th'), "
                             "cell => cell.getAttribute('aria-sort'))")

    players = {player["name"]: player for player in data["participants"]}
    engines = [player for player in data["participants"] if not player["bye"]]
    rated = sorted((p["rating"]["elo"] for p in engines if p["rating"] and "elo" in p["rating"]), reverse=True)
    same("at first", "ascending", sorted_as()[0])
    page.click(header_button(9))
    names = page.evaluate(NAMES)
    elo = [players[name]["rating"]["elo"] for name in names
           if players[name]["rating"] and "elo" in players[name]["rating"]]
    same("by Elo", rated, elo)
    same("told to who does not see it", "descending", sorted_as()[8])
    page.click(header_button(9))
    names = page.evaluate(NAMES)
    elo = [players[name]["rating"]["elo"] for name in names
           if players[name]["rating"] and "elo" in players[name]["rating"]]
    same("by Elo, a second click", rated[::-1], elo)
    # With the keyboard alone.
    page.evaluate(f"document.querySelector('{header_button(7)}').focus()")
    page.key("Enter", 13, "\r")
    lost = [int(text) for text in page.evaluate(column(6))]
    same("by losses", sorted(lost, reverse=True), lost)
    page.click(header_button(1))
    same("by rank again", in_order_of_rank(data), page.evaluate(NAMES))
    page.click(header_button(2))
    by_name = page.evaluate(NAMES)
    same("by name: nobody gets lost", sorted(in_order_of_rank(data)), sorted(by_name))
    return faults


def keeps_heads_in_view(page):
    """Scrolled to its far end, a wide table still has its head above and its names at the left."""
    return page.evaluate("""(() => {
      const faults = [];
      document.querySelectorAll('#standings .scroll, #cross .scroll').forEach(box => {
        const closed = box.closest('details:not([open])');
        if (closed) closed.open = true;
        box.scrollTo({left: 1e6, top: 1e6, behavior: 'instant'});
        const frame = box.getBoundingClientRect();
        const head = box.querySelector('thead th').getBoundingClientRect();
        const name = box.querySelector('tbody tr:last-child th').getBoundingClientRect();
        if (Math.abs(head.top - frame.top) > 2) faults.push(`head at ${head.top}, box at ${frame.top}`);
        if (box.scrollLeft > 100 && Math.abs(name.left - frame.left) > 2) {
          faults.push(`name at ${name.left}, box at ${frame.left}`);
        }
        box.scrollTo({left: 0, top: 0, behavior: 'instant'});
      });
      return faults;
    })()""")


def shows_single_results(page, data):
    cell = "#cross td[data-r]"
    if data["type"] == "swiss" or not data["counts"]["played"]:
        return []
    shown = "getComputedStyle(document.activeElement, '::after').content"
    page.evaluate(f"document.querySelector('{cell}').focus()")
    faults = []
    first = page.evaluate(shown)
    if not any(mark in first for mark in ("1w", "½w", "0w", "1b", "½b", "0b")):
        faults.append(f"a cell that is focused shows {first!r}")
    before = page.evaluate("document.activeElement.cellIndex")
    page.key("ArrowRight", 39)
    if page.evaluate("document.activeElement.cellIndex") <= before:
        faults.append("the arrow keys do not lead to the next cell")
    page.evaluate("document.activeElement.blur()")
    return faults


def is_quick(page, seconds):
    faults = [] if page.seconds < seconds else [f"loaded in {page.seconds:.1f} s"]
    began = time.monotonic()
    page.click(header_button(3))
    page.evaluate("new Promise(done => requestAnimationFrame(() => setTimeout(done)))")
    sorted_in = time.monotonic() - began
    return faults + ([] if sorted_in < seconds else [f"sorted in {sorted_in:.1f} s"])


def loads_itself_anew(browser, path):
    # Its first half minute passes in a blink, and once: a page that is told to load itself anew each millisecond never
    # comes to the end of it on a busy machine.
    page = browser.open(path, width=1400, before="""
        if (history.state === null) {
          window.setInterval = (what, span) => { window.span = span; window.hurry = () => setTimeout(what, 1); };
        }""")
    page.click(header_button(9))
    # Somebody who has followed a link of the page since.
    page.evaluate("location.hash = '#games'")
    page.evaluate("window.isOld = true")
    span = page.evaluate("window.span")
    page.forget_loads()
    page.evaluate("window.hurry() && 1")
    page.await_load()
    faults = [] if span == 30000 else [f"it waits {span} milliseconds"]
    if page.evaluate("window.isOld === true"):
        faults.append("the page is the old one")
    if page.evaluate("document.querySelectorAll('#standings thead th')[8].getAttribute('aria-sort')") != "descending":
        faults.append("it is not sorted any more as it was")
    page.close()
    return faults
