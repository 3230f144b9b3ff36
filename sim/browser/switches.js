// The switches for what is used most. Each shows what the terminal's database says, whoever changed it, and does
// nothing but send the console's command.

const BATTERY = 'ram.status.battery.1.relative_state_of_charge';
const SUPPLY = 'ram.status.psumcu.events.external_supply';
const SIGNAL = 'ram.status.signal_strength';
const SIM = 'rmcfg.platform.usim.status';
const LANGUAGE = 'cfg.language';
const ALERTS = 'ram.log.alert.';
const WATCHED = [BATTERY, SUPPLY, SIGNAL, SIM, LANGUAGE, ALERTS];

const SEVERITIES = ['info', 'warning', 'error', 'fatal'];
// One alert that the display has a text for, of each severity.
const ALERT_IDS = { info: '0x8060', warning: '0x10201', error: '0x2600', fatal: '0x1120' };

// "int 5" is 5, "string "text"" is text.
function valueOf(text) {
    if (text.startsWith('int '))
        return Number(text.slice(4));
    return text.startsWith('string ') ? text.slice(8, -1) : text;
}

export class Switches {
    constructor(rows, refused) {
        this.refused = refused;
        this.link = null;
        this.values = new Map();
        this.controls = [...rows.querySelectorAll('input, button, select')];
        this.sliders = {
            battery: this.slider('battery', (value) => `battery ${value}`, (value) => `${value} %`),
            signal: this.slider('signal', (value) => `signal ${value}`, (value) => `${Number(value).toFixed(1)} dBHz`),
        };
        this.toggle('supply', (on) => `supply ${on ? 'on' : 'off'}`);
        this.toggle('sim', (on) => `sim ${on ? 'insert' : 'remove'}`);
        rows.querySelectorAll('[data-alert]').forEach((button) => {
            const severity = button.dataset.alert;
            button.addEventListener('click', () => this.send(`alert add ${ALERT_IDS[severity]} ${severity}`));
        });
        this.part('alerts-clear').addEventListener('click', () => this.send('alert clear'));
        this.part('language').addEventListener('change', (event) => this.send(`set ${LANGUAGE} ${event.target.value}`));
    }

    part(id) {
        return document.getElementById(id);
    }

    attach(link) {
        this.link = link;
        this.values.clear();
        link.onwatched = (line) => this.take(line);
        const asked = WATCHED.map((prefix) => link.run(`watch ${prefix}`));
        // What is watched from now on may change before the list has come: the list is older.
        const listed = WATCHED.map((prefix) => link.run(`list ${prefix.replaceAll('.', '\\.')}.*`));
        Promise.all([...asked, ...listed]).then((answers) => {
            answers.slice(asked.length).forEach((answer) => answer.lines.forEach((line) => this.take(line)));
            this.controls.forEach((control) => { control.disabled = false; });
            this.show();
        });
    }

    detach() {
        this.link = null;
        this.controls.forEach((control) => { control.disabled = true; });
    }

    // "KEY = TYPE VALUE", or "KEY = nothing"
    take(line) {
        const at = line.indexOf(' = ');
        if (at < 0)
            return;
        const value = line.slice(at + 3);
        const key = line.slice(0, at);
        if (/^(int|string) /.test(value))
            this.values.set(key, valueOf(value));
        else
            this.values.delete(key);
        this.show();
    }

    async send(command) {
        if (!this.link)
            return;
        const answer = await this.link.run(command);
        const problem = answer.lines.find((line) => line.startsWith('error: '));
        this.refused.textContent = answer.ok || !problem ? '' : problem.slice(7);
        this.show();
    }

    // While it is moved it sends the newest place, one command at a time, and is left alone.
    slider(id, command, written) {
        const input = this.part(id);
        const state = { input, written, isMoved: false, isSending: false };
        const move = async () => {
            state.isMoved = true;
            this.part(`${id}-value`).textContent = written(input.value);
            if (state.isSending)
                return;
            state.isSending = true;
            for (let sent = null; sent !== input.value && this.link;) {
                sent = input.value;
                await this.send(command(sent));
            }
            state.isSending = false;
            state.isMoved = false;
            this.show();
        };
        input.addEventListener('input', move);
        return state;
    }

    toggle(id, command) {
        const button = this.part(id);
        button.addEventListener('click', () => this.send(command(button.getAttribute('aria-checked') !== 'true')));
    }

    showSlider(id, value, text) {
        const state = this.sliders[id];
        if (state.isMoved)
            return;
        if (value !== undefined)
            state.input.value = value;
        this.part(`${id}-value`).textContent = value === undefined ? 'unknown' : text || state.written(value);
    }

    showToggle(id, isOn, text) {
        this.part(id).setAttribute('aria-checked', String(isOn));
        this.part(`${id}-value`).textContent = text;
    }

    show() {
        const supply = this.values.get(SUPPLY);
        const card = this.values.get(SIM);
        const signal = this.values.get(SIGNAL);
        this.showSlider('battery', this.values.get(BATTERY));
        this.showSlider('signal', signal === undefined ? undefined : signal / 10);
        this.showToggle('supply', supply !== undefined && supply !== 0, supply ? 'on' : 'off');
        this.showToggle('sim', card === 1, { 0: 'out', 1: 'in' }[card] || 'reading');
        this.part('language').value = String(this.values.get(LANGUAGE) ?? 0);
        this.part('alerts-value').textContent = this.alertText();
    }

    alertText() {
        const counts = SEVERITIES.map(() => 0);
        let others = 0;
        for (const [key, value] of this.values) {
            if (!/^ram\.log\.alert\.\d+\.severity$/.test(key))
                continue;
            if (counts[value] !== undefined)
                counts[value]++;
            else
                others++;
        }
        const parts = SEVERITIES.map((name, at) => counts[at] && `${counts[at]} ${name}`).filter(Boolean);
        if (others)
            parts.push(`${others} of other severity`);
        return parts.length ? `In the log: ${parts.join(', ')}` : 'None in the log';
    }
}
