// The page of the panel: takes the tokens out of the address, shows the LCD, sends keys, and tells when panel
// or console is lost. The LCD is an RFB session of the X server that the display runs in; keys are its keysyms.
// Switches and console stand in files of their own.
import RFB from './novnc/core/rfb.js';
import { ConsoleLink, ConsolePane } from './console.js';
import { Switches } from './switches.js';

const LCD_WIDTH = 256;
const LCD_HEIGHT = 64;
const LEAST_SCALE = 4;        // where the window is wide enough
const LARGEST_SHARE = 0.42;   // of the window's height, beyond the least scale
const LONG_OK = 700;          // ms that OK is held
const REPEAT_DELAY = 500;     // ms until a held arrow repeats
const REPEAT_INTERVAL = 150;  // ms

// What the display's keys are in X.
const KEYS = {
    up: { keysym: 0xff52, code: 'ArrowUp' },
    down: { keysym: 0xff54, code: 'ArrowDown' },
    left: { keysym: 0xff51, code: 'ArrowLeft' },
    right: { keysym: 0xff53, code: 'ArrowRight' },
    ok: { keysym: 0xff0d, code: 'Enter' },
    longOk: { keysym: 0x20, code: 'Space', says: 'Long OK' },
    screenshot: { keysym: 0xffc9, code: 'F12', says: 'Screenshot' },
};
const TYPED = { ArrowUp: 'up', ArrowDown: 'down', ArrowLeft: 'left', ArrowRight: 'right', Enter: 'ok', ' ': 'longOk',
    F12: 'screenshot' };

const element = (id) => document.getElementById(id);

// --- The tokens

// They come behind the #, which no server is told, and are then only in this tab's memory: not in the history,
// and not in what the address line shows.
function takeTokens() {
    const given = window.location.hash.slice(1);
    if (given) {
        window.sessionStorage.setItem('tokens', given);
        window.history.replaceState(null, '', window.location.pathname);
    }
    const [panel, console] = (given || window.sessionStorage.getItem('tokens') || '').split('.');
    return panel && console ? { panel, console } : null;
}

function socketAddress(token) {
    return `ws://${window.location.host}/websockify?token=${encodeURIComponent(token)}`;
}

// --- What is lost, and what to do

const links = { panel: 'waiting', console: 'waiting' };
let hasTokens = true;

const STATES = { waiting: 'connecting', good: 'connected', lost: 'lost' };
const ADVICE = {
    tokens: ['This address has no token.',
        'Open the whole address that ./run prints; it is made anew at each start.'],
    both: ['The terminal is gone.',
        'It has ended, or this address is of an earlier start. Start it with ./run --browser and open the address that it prints.'],
    panel: ['The panel is lost.',
        'The console still answers. If trying again does not help, end ./run with Ctrl-C and start it anew.'],
    console: ['The console is lost.',
        'The panel still works. If trying again does not help, end ./run with Ctrl-C and start it anew.'],
};

function advice() {
    if (!hasTokens)
        return ADVICE.tokens;
    if (links.panel === 'lost' && links.console === 'lost')
        return ADVICE.both;
    return links.panel === 'lost' ? ADVICE.panel : links.console === 'lost' ? ADVICE.console : null;
}

function showLinks() {
    for (const [name, title] of [['panel', 'Panel'], ['console', 'Console']]) {
        const shown = element(`${name}-state`);
        shown.dataset.state = links[name];
        shown.textContent = `${title} ${STATES[links[name]]}`;
    }
    const dark = element('dark');
    dark.hidden = links.panel === 'good';
    dark.textContent = links.panel === 'lost' ? 'No picture: the panel is lost' : 'Connecting';
    const text = advice();
    element('notice').hidden = !text;
    element('notice-again').hidden = !hasTokens;
    if (text)
        [element('notice-what').textContent, element('notice-do').textContent] = text;
}

function setLink(name, state) {
    links[name] = state;
    showLinks();
}

// --- The LCD

let rfb = null;

function connectPanel(token) {
    setLink('panel', 'waiting');
    element('lcd').replaceChildren();
    const session = new RFB(element('lcd'), socketAddress(token), { shared: true });
    rfb = session;
    session.scaleViewport = true;
    session.focusOnClick = false;
    session.background = '#000';
    session.qualityLevel = 9;
    session.addEventListener('connect', () => setLink('panel', 'good'));
    session.addEventListener('disconnect', () => {
        if (rfb === session) {
            rfb = null;
            setLink('panel', 'lost');
        }
    });
}

// A whole number of the screen's own pixels for each of the LCD's, so that all are of one size.
function fitLcd() {
    const face = element('face');
    const lcd = element('lcd');
    const style = getComputedStyle(face);
    const glass = lcd.parentElement;
    const beside = getComputedStyle(face).gridTemplateColumns.split(' ').length > 1;
    let taken = parseFloat(style.paddingLeft) + parseFloat(style.paddingRight) + 2;
    taken += glass.offsetWidth - glass.clientWidth;
    if (beside)
        taken += element('keypad').offsetWidth + parseFloat(style.columnGap);
    const density = window.devicePixelRatio || 1;
    const wide = (face.parentElement.clientWidth - taken) * density / LCD_WIDTH;
    const high = Math.max(window.innerHeight * LARGEST_SHARE / LCD_HEIGHT, LEAST_SCALE) * density;
    const scale = Math.max(1, Math.floor(Math.min(wide, high) + 0.001)) / density;
    lcd.style.width = `${LCD_WIDTH * scale}px`;
    lcd.style.height = `${LCD_HEIGHT * scale}px`;
}

// Also when the window goes to a screen of another density, where its size in CSS pixels stays.
function keepLcdFit() {
    const observer = new ResizeObserver(fitLcd);
    observer.observe(element('face').parentElement);
    try {
        observer.observe(element('lcd'), { box: 'device-pixel-content-box' });
    } catch (problem) {
        // Not every browser counts in those; the next change of the window's size will do there.
    }
    window.addEventListener('resize', fitLcd);
    fitLcd();
}

// --- Keys

let saying = 0;

function say(text) {
    element('said').textContent = text;
    clearTimeout(saying);
    saying = setTimeout(() => { element('said').textContent = ''; }, 1500);
}

function sendKey(name) {
    const key = KEYS[name];
    if (!rfb || links.panel !== 'good') {
        say('No panel');
        return;
    }
    rfb.sendKey(key.keysym, key.code);
    if (key.says)
        say(key.says);
}

// A key that is down, by pointer or by keyboard: an arrow works at once and repeats, OK works when it is let go,
// or as a long OK when it has been held.
class HeldKey {
    constructor(name, repeats) {
        this.name = name;
        this.button = document.querySelector(`.key[data-key="${name}"]`);
        this.timer = 0;
        if (this.button)
            this.button.classList.add('pressed');
        if (name === 'ok') {
            this.timer = setTimeout(() => this.beLong(), LONG_OK);
            return;
        }
        sendKey(name);
        if (repeats && name !== 'screenshot')
            this.timer = setTimeout(() => this.repeat(), REPEAT_DELAY);
    }

    beLong() {
        this.timer = 0;
        this.button.classList.add('long');
        sendKey('longOk');
    }

    repeat() {
        sendKey(this.name);
        this.timer = setTimeout(() => this.repeat(), REPEAT_INTERVAL);
    }

    // Let go; without counting it was taken away.
    end(counts) {
        if (this.name === 'ok' && this.timer && counts)
            sendKey('ok');
        clearTimeout(this.timer);
        if (this.button)
            this.button.classList.remove('pressed', 'long');
    }
}

function listenToPointer(button) {
    let held = null;
    const end = (counts) => {
        if (held)
            held.end(counts);
        held = null;
    };
    button.addEventListener('pointerdown', (event) => {
        if (event.button !== 0 || held)
            return;
        button.setPointerCapture(event.pointerId);
        held = new HeldKey(button.dataset.key, true);
    });
    button.addEventListener('pointerup', () => end(true));
    button.addEventListener('pointercancel', () => end(false));
    button.addEventListener('lostpointercapture', () => end(false));
    button.addEventListener('contextmenu', (event) => event.preventDefault());
    // The keyboard stays with the panel.
    button.addEventListener('mousedown', (event) => {
        event.preventDefault();
        element('face').focus({ preventScroll: true });
    });
    // From an assistive program, which has no pointer.
    button.addEventListener('click', (event) => {
        if (event.detail === 0 && event.pointerType !== 'mouse')
            new HeldKey(button.dataset.key, false).end(true);
    });
}

// The key that is typed, if it is the panel's: on a key of the panel Enter and Space press that one, and what has
// the focus elsewhere keeps its own keys.
function typedKey(event) {
    if (event.ctrlKey || event.altKey || event.metaKey)
        return null;
    const focus = document.activeElement;
    const name = TYPED[event.key];
    if (focus && focus.matches('.key') && (event.key === 'Enter' || event.key === ' '))
        return focus.dataset.key;
    const elsewhere = focus && focus !== document.body && !element('face').contains(focus);
    return name && (!elsewhere || name === 'screenshot') ? name : null;
}

function listenToKeyboard() {
    const held = new Map();
    document.addEventListener('keydown', (event) => {
        const name = typedKey(event);
        if (!name)
            return;
        event.preventDefault();
        const before = held.get(event.code);
        if (!before)
            held.set(event.code, new HeldKey(name, false));
        else if (event.repeat && before.name === name && KEYS[name] && /^(up|down|left|right)$/.test(name))
            sendKey(name);
    });
    document.addEventListener('keyup', (event) => {
        const key = held.get(event.code);
        if (!key)
            return;
        event.preventDefault();
        held.delete(event.code);
        key.end(true);
    });
    window.addEventListener('blur', () => {
        held.forEach((key) => key.end(false));
        held.clear();
    });
}

// --- All together

function start() {
    if (window.top !== window.self) // no page around this one has business here
        return;
    const tokens = takeTokens();
    const pane = new ConsolePane(element('output'), element('entry'), element('line'));
    const switches = new Switches(element('switches'), element('refused'));
    listenToKeyboard();
    document.querySelectorAll('[data-key]').forEach(listenToPointer);
    keepLcdFit();
    if (!tokens) {
        hasTokens = false;
        links.panel = links.console = 'lost';
        showLinks();
        return;
    }

    // Two sessions: what is typed may take its time, and the switches must not wait for it.
    const connectConsole = () => {
        setLink('console', 'waiting');
        const sessions = [];
        const lost = () => {
            if (links.console === 'lost')
                return;
            setLink('console', 'lost');
            pane.detach();
            switches.detach();
            sessions.forEach((link) => link.close());
        };
        const opened = () => {
            if (sessions.every((link) => link.isOpen))
                setLink('console', 'good');
        };
        for (const user of [pane, switches]) {
            const link = new ConsoleLink(socketAddress(tokens.console));
            link.onlost = lost;
            link.onopen = () => { user.attach(link); opened(); };
            sessions.push(link);
        }
    };
    element('notice-again').addEventListener('click', () => {
        if (links.panel === 'lost')
            connectPanel(tokens.panel);
        if (links.console === 'lost')
            connectConsole();
    });
    window.addEventListener('hashchange', () => window.location.reload());
    connectPanel(tokens.panel);
    connectConsole();
    element('face').focus({ preventScroll: true });
}

start();
