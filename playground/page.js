// SPDX-License-Identifier: MIT

// The page. It keeps what is to be shown in `state`, asks the worker, and draws what the worker answers. Of the tree only the rows
// in view are drawn, of the marks in the text only those of the lines in view, so long documents take no longer to show.

const $ = (id) => document.getElementById(id);
const state = {text: "", path: "", prefix: false, sorted: false, start: ""};  // the start is a path, empty for the root

const longestText = 16 << 20;
const patience = 15000;  // milliseconds that the library may take
const rowHeight = 26;
const mostRows = 500000;  // browsers draw nothing that is higher
const lineHeight = 20;
const longestLine = 2000;

function make(tag, className, text) {
    const made = document.createElement(tag);
    if (className)
        made.className = className;
    if (text !== undefined)
        made.textContent = text;
    return made;
}

const count = (number, one, many = one + "s") => `${number.toLocaleString("en")} ${number === 1 ? one : many}`;

// ---- The worker ----

let worker = null;
let asked = new Map();
let lastId = 0;

function startWorker() {
    const source = URL.createObjectURL(new Blob([workerSource], {type: "text/javascript"}));
    worker = new Worker(source);
    worker.onmessage = ({data}) => {
        const waiting = asked.get(data.id);
        asked.delete(data.id);
        if (waiting)
            data.failure === undefined ? waiting.resolve(data.answer) : waiting.reject(new Error(data.failure));
    };
    read.text = null;
    return ask("load", wasm);
}

/// Ends the worker and whatever it is doing, and starts another.
function restartWorker() {
    worker.terminate();
    for (const {reject} of asked.values())
        reject(new Error("stopped"));
    asked = new Map();
    tree.rows = 0;
    return startWorker();
}

function ask(kind, data) {
    const id = ++lastId;
    return new Promise((resolve, reject) => {
        asked.set(id, {resolve, reject});
        worker.postMessage({id, kind, data});
    });
}

/// The same for what may take too long.
function askInTime(kind, data) {
    let timer;
    const late = new Promise((_, reject) => {
        timer = setTimeout(() => reject(new Error("late")), patience);
    });
    return Promise.race([ask(kind, data), late]).finally(() => clearTimeout(timer));
}

// ---- What is shown follows what is typed ----

const read = {text: null, sorted: false, answer: null};  // what the worker has read last, and what came of it
let isBusy = false;
let isWanted = false;
let timer = 0;

/// Shows the state soon, once nothing more is typed.
function refreshSoon() {
    clearTimeout(timer);
    timer = setTimeout(refresh, state.text.length > 100000 ? 120 : 30);
}

async function refresh() {
    isWanted = true;
    if (isBusy)
        return;
    isBusy = true;
    while (isWanted) {
        isWanted = false;
        try {
            await show();
        } catch (failure) {
            await recover(failure);
        }
    }
    isBusy = false;
    document.documentElement.dataset.shown = String(Number(document.documentElement.dataset.shown || 0) + 1);
}

async function recover(failure) {
    await restartWorker();
    tree.clear();
    refuse({message: failure.message === "late" ? "This takes too long and was stopped." : "This takes more than a page has."});
}

async function show() {
    const begun = performance.now();
    const {text, path, prefix, sorted} = state;
    setLink();
    showSteps(await askInTime("explain", {path, prefix}));
    if (text.length > longestText) {
        read.text = null;
        return refuse({message: `The text has more than ${longestText >> 20} million characters; use the program for so long a text.`});
    }
    const isNew = read.text !== text || read.sorted !== sorted;
    if (isNew) {
        read.answer = await askInTime("read", {text, sorted});
        Object.assign(read, {text, sorted});
    }
    if (read.answer.rows === undefined)
        return refuse(read.answer);
    const {query, start} = await askInTime("query", {path, prefix, start: state.start});
    $("xml").setAttribute("aria-invalid", false);
    showStart(start);
    showQuery(query);
    await tree.show(read.answer.rows, query.rows || [], isNew);
    document.documentElement.dataset.took = String(performance.now() - begun);
    if (isNew)
        await showLosses();
    await showWritten();
}

/// The text is not XML, or there is no answer for another reason: the tree of the last text that was XML stays, in pale, and
/// nothing that was counted in it.
function refuse({line, column, message, more, error}) {
    const others = more ? ` (and ${count(more, "more error")})` : "";
    const reason = line ? "The text is not XML." : message || error;
    setResult(line ? `Not XML in line ${line}, column ${column}: ${message}${others}` : reason, true);
    showNotes({start: [], path: [], content: []});
    $("notes").classList.remove("missed");
    $("xml").setAttribute("aria-invalid", Boolean(line));
    marks.set(line ? [marks.at(line, column)] : []);
    $("marked").textContent = $("size").textContent = "";
    tree.setStale();
    showSelected([], 0);
    $("tab-dropped").textContent = "Dropped";
    for (const id of ["selected", "dropped", "compact", "formatted"])
        $(id).replaceChildren(make("p", "more", reason));
}

function setResult(text, isRefused, exception = "") {
    $("result").textContent = text;
    $("result").classList.toggle("refused", isRefused);
    $("exception").replaceChildren(...(exception ? ["The library throws ", make("code", "", exception)] : []));
}

const notes = {start: [], path: [], content: []};  // each {text, kind}

/// Shows all notes, of which some are new.
function showNotes(some) {
    Object.assign(notes, some);
    $("notes").replaceChildren(...Object.values(notes).flat().map(({text, kind}) => make("li", kind, text)));
}

/// What may be the reason that nothing is selected looks like one only then.
function showQuery({error, exception, count: matches, names = [], notes: path = []}) {
    if (exception)
        setResult(error ? `Refused: ${error}` : "The path is refused.", true, exception);
    else if (error)
        setResult(error, true);
    else
        setResult(matches === 0 ? "Nothing is selected." : `${count(matches, "node")} selected.`, false);
    $("notes").classList.toggle("missed", matches === 0);
    showNotes({path});
    showSelected(names, matches || 0);
}

function showSelected(names, all) {
    $("tab-selected").textContent = all ? `Selected (${all.toLocaleString("en")})` : "Selected";
    const list = make("ol");
    names.forEach((name, number) => {
        const button = make("button", "", name);
        button.type = "button";
        button.addEventListener("click", () => tree.goTo(number));
        const item = make("li");
        item.append(button);
        list.append(item);
    });
    $("selected").replaceChildren(list);
    if (all > names.length)
        $("selected").append(make("p", "more", `and ${count(all - names.length, "more node")}`));
    if (all === 0)
        $("selected").replaceChildren(make("p", "more", "Nothing."));
}

function showStart({row, name, isGone}) {
    tree.start = row;
    const isRoot = state.start === "";
    $("start").textContent = isRoot ? `from <${name}>` : `from <${name}> \u2715`;
    $("start").disabled = isRoot;
    $("start").setAttribute("aria-label", isRoot ? `The path starts at the root, ${name}`
        : `The path starts at ${name}, element ${row + 1}; start at the root again`);
    showNotes({start: isGone ? [{text: `there is no ${state.start} to start at, so the path starts at the root`, kind: "surprise"}] : []});
}

function showSteps(steps) {
    const isBelow = state.start !== "";
    $("steps").replaceChildren(...steps.map(({step, lines}, number) => {
        const item = make("li");
        const heading = make("h3", "", `step ${number + 1}: `);
        heading.append(make("code", "", step));
        item.append(heading);
        item.append(...lines.map(({text, kind}) => make("p", kind, text)));
        return item;
    }));
    if (isBelow)
        $("steps").prepend(make("li", "more", "Here, the root element is the element at which the path starts."));
}

async function showLosses() {
    const {losses, count: all, harmless, unseen, error} = await askInTime("losses");
    if (error)
        throw new Error(error);
    marks.set(losses.map(({begin, length, harmless}) => ({begin, end: begin + length, kind: harmless ? "harmless" : ""})));
    $("marked").textContent = all > losses.length ? `only the first ${losses.length.toLocaleString("en")} are marked` : "";
    showNotes({content: unseen ? [{text: `${unseen}; "Dropped" lists them`, kind: "reason"}] : []});
    showDropped(losses, all - harmless, all - losses.length);
}

/// Notes of the reader are listed with what is dropped, but not counted.
function showDropped(losses, dropped, unlisted) {
    $("tab-dropped").textContent = dropped ? `Dropped (${dropped.toLocaleString("en")})` : "Dropped";
    const list = make("ol");
    for (const {line, column, kind, excerpt, harmless, begin, length} of losses) {
        const button = make("button");
        button.type = "button";
        button.append(make("span", "where", `${line}:${column}: `), `${harmless ? "note: " : ""}${kind}: ${excerpt}`);
        button.addEventListener("click", () => marks.select(begin, begin + length));
        const item = make("li");
        item.append(button);
        list.append(item);
    }
    $("dropped").replaceChildren(list);
    if (dropped === 0)
        $("dropped").prepend(make("p", "more", losses.length ? "Nothing is dropped." : "Nothing is dropped: what is written is what was read."));
    if (unlisted)
        $("dropped").append(make("p", "more", `and ${unlisted.toLocaleString("en")} more, which are not marked in the text`));
}

/// The text that the library writes, for the panel that is open.
async function showWritten() {
    const kind = ["compact", "formatted"].find((id) => !$(id).hidden);
    if (!kind || !read.answer || read.answer.rows === undefined)
        return;
    const {size, text} = await askInTime("write", {formatted: kind === "formatted"});
    const lines = make("pre", "", text);
    $(kind).replaceChildren(lines, make("p", "more", count(size, "byte")));
}

// ---- The tree ----

const tree = {
    rows: 0,
    start: 0,
    matches: [],  // the row of each
    current: -1,  // the match that was gone to
    active: 0,
    drawn: 0,

    clear() {
        this.rows = 0;
        this.matches = [];
        $("rows").replaceChildren();
    },

    setStale() {
        $("tree").classList.add("stale");
        this.matches = [];
        this.showPlace();
        $("place").textContent = this.rows ? "before the error" : "";
    },

    async show(rows, matches, isNew) {
        $("tree").classList.remove("stale");
        this.rows = Math.min(rows, mostRows);
        this.matches = matches;
        this.current = -1;
        this.active = Math.min(this.active, this.rows - 1);
        $("rows").style.height = `${this.rows * rowHeight}px`;
        $("size").textContent = `${count(rows, "element")}`;
        if (matches.length && !this.isInView(matches[0]) && (isNew || !matches.some((row) => this.isInView(row))))
            this.scrollTo(matches[0]);
        this.showPlace();
        await this.draw();
    },

    first() {
        return Math.max(0, Math.floor($("tree").scrollTop / rowHeight) - 5);
    },

    isInView(row) {
        const {scrollTop, clientHeight} = $("tree");
        return row * rowHeight >= scrollTop && (row + 1) * rowHeight <= scrollTop + clientHeight;
    },

    scrollTo(row) {
        if (!this.isInView(row))
            $("tree").scrollTop = Math.max(0, (row - 3) * rowHeight);
    },

    async draw() {
        const number = ++this.drawn;
        const first = this.first();
        const rows = await ask("rows", {first, count: Math.ceil($("tree").clientHeight / rowHeight) + 10});
        if (number !== this.drawn || !Array.isArray(rows))
            return;
        $("rows").replaceChildren(...rows.slice(0, this.rows - first).map((row, i) => this.make(row, first + i)));
        this.markActive();
    },

    make(row, number) {
        const made = make("div", number === this.start ? "row start" : "row");
        made.id = `row-${number}`;
        made.setAttribute("role", "treeitem");
        made.setAttribute("aria-level", row.depth + 1);
        made.setAttribute("aria-selected", number === this.start);
        made.style.top = `${number * rowHeight}px`;
        made.style.paddingLeft = `${8 + Math.min(row.depth, 40) * 16}px`;
        made.append(this.makePiece(row.match, this.makeTag(row)));
        if (row.text !== null) {
            const text = this.makePiece(row.text_match, [row.text]);
            text.classList.add("content");
            made.append(" ", text);
        }
        return made;
    },

    makeTag(row) {
        const parts = [make("span", "tag", row.name)];
        for (const [name, value] of row.attributes)
            parts.push(" ", make("span", "attribute", name), "=", make("span", "value", `"${value}"`));
        if (row.more)
            parts.push(" \u2026");
        return parts;
    },

    makePiece(match, parts) {
        const piece = make("span", match ? "piece match" : "piece");
        if (match) {
            const number = make("span", "number", String(match));
            number.setAttribute("aria-label", `match ${match}: `);
            piece.append(number);
            piece.classList.toggle("current", match === this.current + 1);
        }
        piece.append(...parts);
        return piece;
    },

    markActive() {
        for (const row of $("rows").querySelectorAll(".active"))
            row.classList.remove("active");
        const row = $(`row-${this.active}`);
        $("tree").toggleAttribute("aria-activedescendant", row !== null);
        if (row) {
            row.classList.add("active");
            $("tree").setAttribute("aria-activedescendant", row.id);
        }
    },

    async setActive(row) {
        this.active = Math.max(0, Math.min(row, this.rows - 1));
        this.scrollTo(this.active);
        await this.draw();
    },

    async startAt(row) {
        this.active = row;
        const {path} = row === 0 ? {} : await ask("path", {row}).catch(() => ({}));
        state.start = path || "";
        refresh();
    },

    goTo(match) {
        if (!this.matches.length)
            return;
        this.current = (match + this.matches.length) % this.matches.length;
        this.showPlace();
        this.setActive(this.matches[this.current]);
    },

    showPlace() {
        const all = this.matches.length;
        $("place").textContent = all === 0 ? "no match" : `${this.current < 0 ? "" : `${this.current + 1} of `}${count(all, "match", "matches")}`;
        $("previous").disabled = $("next").disabled = all === 0;
    },
};

const treeKeys = {
    ArrowDown: () => tree.active + 1,
    ArrowUp: () => tree.active - 1,
    PageDown: () => tree.active + Math.floor($("tree").clientHeight / rowHeight),
    PageUp: () => tree.active - Math.floor($("tree").clientHeight / rowHeight),
    Home: () => 0,
    End: () => tree.rows - 1,
};

// ---- Marks in the text ----

const marks = {
    all: [],
    lines: [0],  // where each begins

    setText(text) {
        this.lines = [0];
        for (let end = text.indexOf("\n"); end !== -1; end = text.indexOf("\n", end + 1))
            this.lines.push(end + 1);
        this.set([]);
    },

    set(all) {
        this.all = all;
        this.draw();
    },

    /// The mark of an error, whose column counts characters.
    at(line, column) {
        const begin = this.lines[Math.min(line, this.lines.length) - 1];
        const end = this.lines[line] === undefined ? state.text.length : this.lines[line] - 1;
        const before = [...state.text.slice(begin, Math.min(end, begin + 2 * column))].slice(0, column - 1).join("").length;
        const place = Math.max(begin, Math.min(begin + before, end - 1));
        return {begin: place, end: Math.min(place + 1, state.text.length), kind: "wrong"};
    },

    /// Only lines in view are drawn, each as the text itself, which is not seen, with the marks in it.
    draw() {
        const {scrollTop, scrollLeft, clientHeight} = $("xml");
        const first = Math.max(0, Math.floor(scrollTop / lineHeight) - 1);
        const after = Math.min(this.lines.length, first + Math.ceil(clientHeight / lineHeight) + 3);
        const drawn = [];
        for (let line = first; line < after; ++line) {
            const made = this.makeLine(line);
            if (made) {
                made.style.top = `${line * lineHeight}px`;
                drawn.push(made);
            }
        }
        $("marks").replaceChildren(...drawn);
        $("marks").style.transform = `translate(${-scrollLeft}px, ${-scrollTop}px)`;
    },

    /// Null if there is no mark in it.
    makeLine(line) {
        const begin = this.lines[line];
        const next = this.lines[line + 1] === undefined ? state.text.length : this.lines[line + 1] - 1;
        const end = Math.min(next, begin + longestLine);
        const here = this.all.filter((mark) => mark.begin < end && mark.end > begin);
        if (here.length === 0)
            return null;
        const made = make("div");
        let reached = begin;
        for (const mark of here) {
            const from = Math.max(mark.begin, reached);
            const to = Math.min(mark.end, end);
            if (to <= from)
                continue;
            made.append(state.text.slice(reached, from), make("mark", mark.kind, state.text.slice(from, to)));
            reached = to;
        }
        return made;
    },

    select(begin, end) {
        let line = 0;
        while (line + 1 < this.lines.length && this.lines[line + 1] <= begin)
            ++line;
        $("xml").focus();
        $("xml").setSelectionRange(begin, end);
        $("xml").scrollTop = Math.max(0, (line - 3) * lineHeight);
    },
};

// ---- The link ----

const mostInLink = 30000;

/// The state as the part of a link after "#": an example by its name, any other text as it is, or empty if it is too long, since
/// the path is not meant for an example.
function describeState() {
    const parts = new URLSearchParams();
    const example = examples.find(({text}) => text === state.text);
    if (example)
        parts.set("example", example.name);
    else
        parts.set("xml", state.text.length <= mostInLink ? state.text : "");
    parts.set("path", state.path);
    if (state.prefix)
        parts.set("names", "prefix");
    if (state.sorted)
        parts.set("sorted", "1");
    if (state.start)
        parts.set("start", state.start);
    return parts.toString();
}

function setLink() {
    const link = "#" + describeState();
    if (link !== location.hash)
        history.replaceState(null, "", link);
}

function followLink() {
    const parts = new URLSearchParams(location.hash.slice(1));
    const example = examples.find(({name}) => name === parts.get("example")) || examples[0];
    setText(parts.has("xml") ? parts.get("xml") : example.text);
    state.path = parts.has("path") ? parts.get("path") : example.path;
    state.prefix = parts.get("names") === "prefix";
    state.sorted = parts.get("sorted") === "1";
    state.start = parts.get("start") || "";
    showState();
    refresh();
}

async function copyLink() {
    setLink();
    const isWhole = state.text.length <= mostInLink || examples.some(({text}) => text === state.text);
    let said = isWhole ? "Copied." : "Copied, without the text, which is too long for a link.";
    try {
        await navigator.clipboard.writeText(location.href);
    } catch (failure) {
        said = "The link is in the address bar.";
    }
    $("copied").textContent = said;
    setTimeout(() => ($("copied").textContent = ""), 4000);
}

// ---- Everything together ----

/// The last text that was not an example, and its path, for whoever comes back from one.
let own = {text: "", path: ""};

function setText(text) {
    state.text = text;
    if ($("xml").value !== text)
        $("xml").value = text;
    marks.setText(text);
}

function showState() {
    $("path").value = state.path;
    $("sorted").checked = state.sorted;
    document.querySelector(`[name="names"][value="${state.prefix ? "prefix" : "exact"}"]`).checked = true;
    showExample();
}

function showExample() {
    const example = examples.find(({text}) => text === state.text);
    $("example").value = example ? example.name : "";
}

function openTab(id) {
    for (const tab of document.querySelectorAll('[role="tab"]')) {
        const isOpen = tab.id === id;
        tab.setAttribute("aria-selected", isOpen);
        tab.tabIndex = isOpen ? 0 : -1;
        $(tab.getAttribute("aria-controls")).hidden = !isOpen;
    }
    showWritten().catch(recover);
}

function listen() {
    $("xml").addEventListener("input", () => {
        state.text = $("xml").value;
        marks.setText(state.text);
        showExample();
        refreshSoon();
    });
    $("xml").addEventListener("scroll", () => marks.draw());
    $("path").addEventListener("input", () => {
        state.path = $("path").value;
        refreshSoon();
    });
    $("path").addEventListener("keydown", (event) => {
        if (event.key === "Enter")
            tree.goTo(tree.current + (event.shiftKey ? -1 : 1));
    });
    $("example").addEventListener("change", () => {
        if (!examples.some(({text}) => text === state.text))
            own = {text: state.text, path: state.path};
        const chosen = examples.find(({name}) => name === $("example").value) || own;
        setText(chosen.text);
        Object.assign(state, {path: chosen.path, start: ""});
        showState();
        refresh();
    });
    for (const radio of document.querySelectorAll('[name="names"]'))
        radio.addEventListener("change", () => {
            state.prefix = radio.value === "prefix";
            refresh();
        });
    $("sorted").addEventListener("change", () => {
        state.sorted = $("sorted").checked;
        refresh();
    });
    $("link").addEventListener("click", copyLink);
    $("start").addEventListener("click", () => tree.startAt(0));
    $("previous").addEventListener("click", () => tree.goTo(tree.current < 0 ? -1 : tree.current - 1));
    $("next").addEventListener("click", () => tree.goTo(tree.current + 1));
    // A row may be drawn again while it is clicked, so the place of the click counts.
    $("rows").addEventListener("click", (event) => {
        const row = Math.floor((event.clientY - $("rows").getBoundingClientRect().top) / rowHeight);
        tree.startAt(Math.max(0, Math.min(row, tree.rows - 1)));
    });
    $("tree").addEventListener("scroll", () => tree.draw());
    $("tree").addEventListener("keydown", (event) => {
        if (event.key === "Enter" || event.key === " ")
            tree.startAt(tree.active);
        else if (event.key === "Escape")
            tree.startAt(0);
        else if (treeKeys[event.key])
            tree.setActive(treeKeys[event.key]());
        else
            return;
        event.preventDefault();
    });
    document.querySelector('[role="tablist"]').addEventListener("keydown", (event) => {
        const tabs = [...document.querySelectorAll('[role="tab"]')];
        const way = {ArrowRight: 1, ArrowLeft: -1}[event.key];
        if (!way)
            return;
        const tab = tabs[(tabs.indexOf(document.activeElement) + way + tabs.length) % tabs.length];
        openTab(tab.id);
        tab.focus();
    });
    for (const tab of document.querySelectorAll('[role="tab"]'))
        tab.addEventListener("click", () => openTab(tab.id));
    addEventListener("hashchange", followLink);
    addEventListener("resize", () => {
        marks.draw();
        tree.draw();
    });
}

async function begin() {
    for (const {name, title} of examples)
        $("example").add(new Option(title, name));
    $("example").add(new Option("Your own text", ""));
    listen();
    try {
        await startWorker();
        followLink();
    } catch (failure) {
        setResult("The library cannot run here: this browser does not know what it needs.", true);
    }
}

begin();
