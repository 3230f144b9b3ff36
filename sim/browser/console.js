// A session of the terminal's console, and the pane in which a person has one.
//
// A session takes lines. It answers each, in order, with its output and a line "= ok", "= failed" or "= bye";
// lines that begin with "* " are things watched and come at any time.

const MOST_LINES = 2000;    // that the pane keeps
const MOST_HISTORY = 500;

// One word of a line, whatever is in it.
function quoted(text) {
    return `"${text.replace(/[\\"]/g, '\\$&')}"`;
}

export class ConsoleLink {
    constructor(address) {
        this.onopen = () => {};
        this.onlost = () => {};
        this.onwatched = () => {};
        this.isOpen = false;
        this.waiting = [];
        this.partial = '';
        this.decoder = new TextDecoder();
        this.encoder = new TextEncoder();
        this.socket = new WebSocket(address, ['binary']);
        this.socket.binaryType = 'arraybuffer';
        this.socket.addEventListener('open', () => {
            this.isOpen = true;
            this.onopen();
        });
        this.socket.addEventListener('message', (event) => this.take(event.data));
        this.socket.addEventListener('close', () => this.lose());
    }

    // Runs a line. The promise has { ok, ended, lines }; it is not kept once the session is lost. Lines of output are
    // given to onLine as they come, if there is one.
    run(line, onLine) {
        return new Promise((resolve) => {
            this.waiting.push({ resolve, onLine, lines: [] });
            if (this.isOpen)
                this.socket.send(this.encoder.encode(`${line.replace(/[\r\n]+/g, ' ')}\n`));
        });
    }

    close() {
        this.socket.close();
    }

    take(data) {
        const parts = (this.partial + this.decoder.decode(data, { stream: true })).split('\n');
        this.partial = parts.pop();
        parts.forEach((line) => this.takeLine(line));
    }

    takeLine(line) {
        if (line.startsWith('* ')) {
            this.onwatched(line.slice(2));
            return;
        }
        const answer = this.waiting[0];
        if (!answer)
            return;
        if (!line.startsWith('= ')) {
            if (answer.onLine)
                answer.onLine(line);
            else
                answer.lines.push(line);
            return;
        }
        this.waiting.shift();
        answer.resolve({ ok: line === '= ok', ended: line === '= bye', lines: answer.lines });
    }

    lose() {
        this.isOpen = false;
        this.waiting = [];
        this.onlost();
    }
}

export class ConsolePane {
    constructor(output, form, input) {
        this.output = output;
        this.input = input;
        this.link = null;
        this.history = [];
        this.place = 0;      // in the history; its length: the line that is being typed
        this.typed = '';
        this.lines = [];     // that are to be shown with the next picture of the page
        this.follows = true;
        form.addEventListener('submit', (event) => {
            event.preventDefault();
            this.enter();
        });
        input.addEventListener('keydown', (event) => this.onKey(event));
        output.addEventListener('scroll', () => {
            this.follows = output.scrollHeight - output.scrollTop - output.clientHeight < 24;
        });
        new ResizeObserver(() => this.follow()).observe(output);
        output.addEventListener('click', () => {
            if (window.getSelection().isCollapsed)
                input.focus();
        });
    }

    attach(link) {
        this.link = link;
        link.onwatched = (line) => this.show(line, 'watched');
        this.input.disabled = false;
    }

    detach() {
        if (this.link)
            this.show('The console is lost.', 'page');
        this.link = null;
        this.input.disabled = true;
    }

    enter() {
        const line = this.input.value;
        if (!this.link)
            return;
        this.input.value = '';
        if (line.trim() && line !== this.history[this.history.length - 1])
            this.history = [...this.history.slice(1 - MOST_HISTORY), line];
        this.place = this.history.length;
        this.show(`> ${line}`, 'typed');
        this.link.run(line, (text) => this.show(text, text.startsWith('error: ') ? 'failed' : ''));
    }

    onKey(event) {
        if (event.ctrlKey || event.altKey || event.metaKey)
            return;
        if (event.key === 'ArrowUp' || event.key === 'ArrowDown') {
            event.preventDefault();
            this.recall(event.key === 'ArrowUp' ? -1 : 1);
        } else if (event.key === 'Tab' && !event.shiftKey && this.input.value.trim()) {
            event.preventDefault(); // on an empty line it leads on, as elsewhere
            this.complete();
        } else if (event.key === 'Escape') {
            this.input.value = '';
            this.place = this.history.length;
        }
    }

    recall(step) {
        const place = this.place + step;
        if (place < 0 || place > this.history.length)
            return;
        if (this.place === this.history.length)
            this.typed = this.input.value;
        this.place = place;
        this.input.value = place === this.history.length ? this.typed : this.history[place];
        this.input.setSelectionRange(this.input.value.length, this.input.value.length);
    }

    async complete() {
        const line = this.input.value;
        const before = line.slice(0, this.input.selectionStart);
        const answer = await this.link.run(`complete ${quoted(before)}`);
        if (!answer.ok || this.input.value !== line)
            return;
        const [completed, ...candidates] = answer.lines;
        if (completed !== undefined && completed.startsWith(before)) {
            this.input.value = completed + line.slice(before.length);
            this.input.setSelectionRange(completed.length, completed.length);
        }
        if (candidates.length > 1)
            this.show(candidates.join('  '), 'page');
    }

    // Adds a line of one of the kinds in panel.css. What comes in a burst is shown at once.
    show(text, kind) {
        if (this.lines.length === 0)
            requestAnimationFrame(() => this.showLines());
        this.lines.push({ text, kind });
        if (this.lines.length > MOST_LINES)
            this.lines.shift();
    }

    showLines() {
        const output = this.output;
        const added = document.createDocumentFragment();
        for (const { text, kind } of this.lines) {
            const line = document.createElement('div');
            line.className = kind;
            line.textContent = text || '\u00a0';
            added.append(line);
        }
        this.lines = [];
        output.append(added);
        while (output.childElementCount > MOST_LINES)
            output.firstElementChild.remove();
        this.follow();
    }

    // Stays at the end, unless somebody reads further up.
    follow() {
        if (this.follows)
            this.output.scrollTop = this.output.scrollHeight;
    }
}
