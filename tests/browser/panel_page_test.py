"""The panel in a browser, whole: display, X server, terminal, proxy and page as processes, and a browser in which
the page is looked at, clicked and typed into. And who gets nothing: whoever has no token, comes from elsewhere or
is another user; and that nothing is left."""
import base64
import os
import re
import signal
import socket
import stat
import struct
import subprocess
import sys
import tempfile
import time
import unittest

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from desk import SERVE_PANEL, Browser, ConsoleClient, Desk, Process, descendants, is_running, screenshot_lock, wait_until  # noqa: E402

READ_LCD = '''
    const canvas = document.querySelector('#lcd canvas');
    if (!canvas || canvas.width !== 256 || canvas.height !== 64) return null;
    const data = canvas.getContext('2d').getImageData(0, 0, 256, 64).data;
    let text = '';
    for (let at = 0; at < data.length; at += 4) text += String.fromCharCode(data[at], data[at + 1], data[at + 2]);
    return btoa(text);'''
BLACK = bytes(256 * 64 * 3)


# Columns of the upper line of the frame around an icon of the status screen's lower row.
CONNECT = range(8, 24)
MENU = range(226, 246)

# Parts of the status screen: left, top, right, bottom.
BATTERY = (227, 17, 231, 24)  # of its filling, light above a third
BATTERY_PIXELS = 4 * 7
SIGNAL = (0, 0, 32, 16)
TEXT = (40, 32, 210, 60)


def part(picture, place):
    left, top, right, bottom = place
    return b''.join(picture[(y * 256 + left) * 3:(y * 256 + right) * 3] for y in range(top, bottom))


def has_frame(picture, columns):
    return any(all(picture[(y * 256 + x) * 3] > 200 for x in columns) for y in range(26, 31))


def bitmap(path):
    """The pixels of a BMP of 24 or 32 bits a pixel, as the canvas has them."""
    with open(path, 'rb') as file:
        data = file.read()
    start, = struct.unpack_from('<I', data, 10)
    width, height, _, bits = struct.unpack_from('<iiHH', data, 18)
    step = bits // 8
    row = (width * step + 3) // 4 * 4
    pixels = bytearray()
    for y in range(abs(height)):
        line = start + row * (y if height < 0 else height - 1 - y)
        for x in range(line, line + width * step, step):
            pixels += bytes((data[x + 2], data[x + 1], data[x]))
    return bytes(pixels)


def upgrade(port, token, origin=None):
    """Asks for a web socket. Returns the status line of the answer, empty if there is none."""
    query = '' if token is None else f'?token={token}'
    with socket.create_connection(('127.0.0.1', port), 10) as connection, connection.makefile('rb') as answer:
        connection.sendall((f'GET /websockify{query} HTTP/1.1\r\nHost: 127.0.0.1:{port}\r\nUpgrade: websocket\r\n'
                            'Connection: Upgrade\r\nSec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n'
                            'Sec-WebSocket-Version: 13\r\nSec-WebSocket-Protocol: binary\r\n'
                            f'Origin: {origin or f"http://127.0.0.1:{port}"}\r\n\r\n').encode())
        return answer.readline().decode('ascii').strip()


def get(port, path):
    with socket.create_connection(('127.0.0.1', port), 10) as connection:
        connection.sendall(f'GET {path} HTTP/1.0\r\n\r\n'.encode())
        head, _, body = connection.makefile('rb').read().partition(b'\r\n\r\n')
        return int(head.split()[1]), body


def mode(path):
    return stat.S_IMODE(os.lstat(path).st_mode)


class Page(unittest.TestCase):
    """With one desk and one browser for all its tests."""

    @classmethod
    def setUpClass(cls):
        cls.desk = Desk()
        cls.addClassCleanup(cls.desk.end)
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.end)
        cls.driver = cls.browser.driver

    def setUp(self):
        self.console = self.desk.console
        for line in ('alert clear', 'set cfg.language 0', 'battery 50', 'battery supply off', 'signal 45'):
            self.console.run(line)
        if self.presses(self.desk.panel_start):  # no test finds the frame where another one has left it
            self.desk.restart_panel()
        self.browser.resize(1280, 900)
        self.load(self.desk.url)

    def load(self, url):
        self.driver.get('about:blank')
        self.driver.get_log('browser')
        self.driver.get(url)
        self.wait_for_link('panel')
        self.wait_for_link('console')
        self.wait_for_lcd(lambda now: now and now != BLACK)
        wait_until(self.element('battery').is_enabled, 'no switches')

    def element(self, name):
        return self.driver.find_element(By.ID, name)

    def key(self, name):
        return self.driver.find_element(By.CSS_SELECTOR, f'.key[data-key="{name}"]')

    def wait_for_link(self, name, state='good'):
        wait_until(lambda: self.element(f'{name}-state').get_attribute('data-state') == state, f'{name} is not {state}')

    def lcd(self):
        data = self.driver.execute_script(READ_LCD)
        return base64.b64decode(data) if data else None

    def wait_for_lcd(self, condition):
        def read():
            now = self.lcd()
            return now if condition(now) else None
        return wait_until(read, 'the picture is not as awaited')

    def presses(self, first):
        """The panel's keys that the display has logged."""
        found = []
        for line in self.desk.log_lines()[first:]:
            known = re.search(r'Key_(\w+)[^:]* was pressed for receiver', line)
            if known:
                found.append(known[1])
            elif 'Unhandled key' in line and re.search(r'key=32\b', line):
                found.append('Space')
        return found

    def wait_for_press(self, first, keys):
        wait_until(lambda: self.presses(first) == keys, f'keys {self.presses(first)}, not {keys}')

    # --- The panel

    def test_loads_without_errors(self):
        self.assertEqual([entry for entry in self.driver.get_log('browser') if entry['level'] != 'INFO'], [])
        self.assertEqual(self.driver.title, 'lumenpanel')
        self.assertFalse(self.element('notice').is_displayed())
        self.assertFalse(self.element('dark').is_displayed())

    def test_lcd_is_what_the_display_shows_to_the_pixel(self):
        with screenshot_lock() as kept:
            first = len(self.desk.log_lines())
            self.driver.find_element(By.CSS_SELECTOR, '.legend [data-key="screenshot"]').click()
            line = self.desk.wait_for_log(r'File .*\.bmp saved\.', first)[-1]
            path = re.search(r'File (.*\.bmp) saved', line)[1]
            picture = bitmap(path)
            if os.path.basename(path) not in kept:
                os.unlink(path)
        self.assertNotEqual(picture, BLACK)
        self.assertEqual(self.wait_for_lcd(lambda now: now == picture), picture)

    def test_lcd_has_a_whole_number_of_pixels_for_each_of_its_own(self):
        for width, height, density, least in ((1280, 800, 1, 4), (1920, 1080, 1, 4), (390, 844, 3, 4), (390, 844, 1, 1),
                                              (1000, 700, 1.5, 2)):
            with self.subTest(width=width, density=density):
                self.browser.resize(width, height, density)
                self.driver.refresh()
                self.wait_for_link('panel')

                def scale():
                    size = self.driver.execute_script(
                        "const box = document.getElementById('lcd').getBoundingClientRect();"
                        'return [box.width * devicePixelRatio / 256, box.height * devicePixelRatio / 64, innerWidth,'
                        'document.documentElement.scrollWidth];')
                    whole = abs(size[0] - round(size[0])) < 0.01 and abs(size[0] - size[1]) < 0.01
                    return whole and round(size[0]) >= least and size[2] == width and size[3] <= width
                wait_until(scale, 'no whole scale, or wider than the window')
        self.assertEqual(self.element('lcd').find_element(By.TAG_NAME, 'canvas').value_of_css_property(
            'image-rendering'), 'pixelated')

    def test_a_clicked_key_moves_the_frame(self):
        first = len(self.desk.log_lines())
        self.assertEqual([has_frame(self.lcd(), place) for place in (CONNECT, MENU)], [False, False])
        self.key('right').click()
        self.wait_for_press(first, ['Right'])
        self.wait_for_lcd(lambda now: has_frame(now, MENU) and not has_frame(now, CONNECT))
        self.key('left').click()
        self.wait_for_press(first, ['Right', 'Left'])
        self.wait_for_lcd(lambda now: has_frame(now, CONNECT) and not has_frame(now, MENU))

    def test_a_typed_key_moves_the_frame(self):
        first = len(self.desk.log_lines())
        self.driver.switch_to.active_element.send_keys(Keys.ARROW_RIGHT)
        self.wait_for_press(first, ['Right'])
        self.wait_for_lcd(lambda now: has_frame(now, MENU))
        self.driver.switch_to.active_element.send_keys(Keys.ARROW_LEFT)
        self.wait_for_press(first, ['Right', 'Left'])
        self.wait_for_lcd(lambda now: has_frame(now, CONNECT) and not has_frame(now, MENU))
        self.driver.switch_to.active_element.send_keys(Keys.ARROW_UP, Keys.ARROW_DOWN)
        self.wait_for_press(first, ['Right', 'Left', 'Up', 'Down'])

    def test_ok_clicked_and_typed_is_ok_and_space_is_long_ok(self):
        first = len(self.desk.log_lines())
        self.key('up').click()
        self.wait_for_press(first, ['Up'])
        self.key('ok').click()
        self.wait_for_press(first, ['Up', 'Return'])
        self.driver.switch_to.active_element.send_keys(Keys.ENTER)
        self.wait_for_press(first, ['Up', 'Return', 'Return'])
        self.driver.switch_to.active_element.send_keys(Keys.SPACE)
        self.wait_for_press(first, ['Up', 'Return', 'Return', 'Space'])

    def test_a_held_ok_is_a_long_ok_and_no_ok(self):
        first = len(self.desk.log_lines())
        began = time.monotonic()
        ActionChains(self.driver).click_and_hold(self.key('ok')).perform()
        self.assertIn('pressed', self.key('ok').get_attribute('class'))
        self.wait_for_press(first, ['Space'])
        self.assertGreaterEqual(time.monotonic() - began, 0.7)
        self.assertIn('long', self.key('ok').get_attribute('class').split())
        self.assertEqual(self.element('said').text, 'Long OK')
        ActionChains(self.driver).release().perform()
        self.assertNotIn('long', self.key('ok').get_attribute('class').split())
        self.key('right').click()
        self.wait_for_press(first, ['Space', 'Right'])

    def test_a_held_arrow_repeats(self):
        first = len(self.desk.log_lines())
        ActionChains(self.driver).click_and_hold(self.key('right')).perform()
        wait_until(lambda: len(self.presses(first)) >= 3, 'no repeats')
        ActionChains(self.driver).release().perform()
        self.assertEqual(set(self.presses(first)), {'Right'})

    def test_a_key_with_the_focus_is_pressed_by_enter(self):
        first = len(self.desk.log_lines())
        self.driver.execute_script("document.querySelector('.key[data-key=down]').focus()")
        self.driver.switch_to.active_element.send_keys(Keys.ENTER)
        self.wait_for_press(first, ['Down'])

    def test_keys_typed_elsewhere_stay_there(self):
        first = len(self.desk.log_lines())
        self.element('line').send_keys('  ', Keys.LEFT, Keys.ESCAPE)
        self.key('right').click()
        self.wait_for_press(first, ['Right'])

    # --- Switches

    def move_slider(self, name, value):
        self.driver.execute_script(
            "arguments[0].value = arguments[1]; arguments[0].dispatchEvent(new Event('input', {bubbles: true}))",
            self.element(name), value)

    def wait_for_key(self, key, value):
        wait_until(lambda: self.console.run(f'get {key}') == [value], f'{key} is not {value}')

    def test_the_battery_changes_the_picture(self):
        self.wait_for_lcd(lambda now: part(now, BATTERY) != bytes(3 * BATTERY_PIXELS))
        self.move_slider('battery', 7)
        self.wait_for_key('ram.status.battery.1.relative_state_of_charge', 'int 7')
        self.wait_for_lcd(lambda now: part(now, BATTERY) == bytes(3 * BATTERY_PIXELS))
        wait_until(lambda: self.element('battery-value').text == '7 %', 'the slider does not tell it')

    def test_the_supply_is_switched(self):
        self.element('supply').click()
        self.wait_for_key('ram.status.psumcu.events.external_supply', 'int 1')
        wait_until(lambda: self.element('supply').get_attribute('aria-checked') == 'true', 'the switch is not on')
        self.element('supply').click()
        self.wait_for_key('ram.status.psumcu.events.external_supply', 'int 0')
        wait_until(lambda: self.element('supply').get_attribute('aria-checked') == 'false', 'the switch is not off')

    def test_the_signal_changes_the_picture(self):
        before = part(self.lcd(), SIGNAL)
        self.move_slider('signal', 55.5)
        self.wait_for_key('ram.status.signal_strength', 'int 555')
        self.wait_for_lcd(lambda now: part(now, SIGNAL) != before)

    def test_the_sim_is_taken_out_and_put_in(self):
        self.assertEqual(self.element('sim').get_attribute('aria-checked'), 'true')
        self.element('sim').click()
        self.wait_for_key('rmcfg.platform.usim.status', 'int 0')
        wait_until(lambda: self.element('sim-value').text == 'out', 'the switch does not tell it')
        self.element('sim').click()
        self.wait_for_key('rmcfg.platform.usim.status', 'int 1')
        wait_until(lambda: self.element('sim-value').text == 'in', 'the switch does not tell it')

    def test_alerts_of_each_severity_come_and_go(self):
        before = self.lcd()
        for severity in ('info', 'warning', 'error', 'fatal'):
            self.driver.find_element(By.CSS_SELECTOR, f'[data-alert="{severity}"]').click()
        wait_until(lambda: self.element('alerts-value').text ==
                   'In the log: 1 info, 1 warning, 1 error, 1 fatal', 'not all alerts')
        self.wait_for_lcd(lambda now: now != before)
        self.element('alerts-clear').click()
        wait_until(lambda: self.element('alerts-value').text == 'None in the log', 'alerts are left')

    def test_a_language_is_chosen(self):
        before = part(self.lcd(), TEXT)
        self.element('language').find_element(By.CSS_SELECTOR, 'option[value="2"]').click()
        self.wait_for_key('cfg.language', 'int 2')
        self.wait_for_lcd(lambda now: part(now, TEXT) != before)

    def test_switches_show_what_others_change(self):
        for line in ('set cfg.language 4', 'battery 33', 'battery supply on', 'signal 38.5', 'alert add 0x1120 fatal'):
            self.console.run(line)
        wait_until(lambda: self.element('language').get_attribute('value') == '4', 'language')
        wait_until(lambda: self.element('battery').get_attribute('value') == '33', 'battery')
        wait_until(lambda: self.element('supply').get_attribute('aria-checked') == 'true', 'supply')
        wait_until(lambda: self.element('signal-value').text == '38.5 dBHz', 'signal')
        wait_until(lambda: self.element('alerts-value').text == 'In the log: 1 fatal', 'alerts')

    # --- The console

    def output(self):
        return [line.text for line in self.element('output').find_elements(By.TAG_NAME, 'div')]

    def enter(self, line):
        self.element('line').send_keys(line, Keys.ENTER)

    def test_a_command_is_run(self):
        self.enter('get cfg.language')
        wait_until(lambda: self.output() == ['> get cfg.language', 'int 0'], f'output {self.output()}')

    def test_a_bad_command_is_told(self):
        self.enter('fly')
        wait_until(lambda: len(self.output()) >= 2 and self.output()[-1].startswith('error: '), 'no error')
        self.assertEqual(len(self.driver.find_elements(By.CSS_SELECTOR, '#output .failed')), 1)

    def test_what_is_watched_is_shown(self):
        self.enter('watch cfg.language')
        self.enter('set cfg.language 1')
        wait_until(lambda: [line.text for line in self.driver.find_elements(By.CSS_SELECTOR, '#output .watched')] ==
                   ['cfg.language = int 1'], 'nothing watched')

    def test_history(self):
        self.enter('get cfg.language')
        self.enter('get cfg.display.timeout')
        line = self.element('line')
        line.send_keys('half', Keys.UP, Keys.UP)
        self.assertEqual(line.get_attribute('value'), 'get cfg.language')
        line.send_keys(Keys.DOWN)
        self.assertEqual(line.get_attribute('value'), 'get cfg.display.timeout')
        line.send_keys(Keys.DOWN)
        self.assertEqual(line.get_attribute('value'), 'half')

    def test_completion(self):
        line = self.element('line')
        line.send_keys('get cfg.lang', Keys.TAB)
        wait_until(lambda: line.get_attribute('value').rstrip() == 'get cfg.language', line.get_attribute('value'))
        self.assertEqual(self.driver.switch_to.active_element, line)
        line.send_keys(Keys.ESCAPE, Keys.TAB)
        self.assertNotEqual(self.driver.switch_to.active_element, line)

    def test_a_long_command_does_not_hold_up_the_switches(self):
        self.enter('wait 60')
        self.move_slider('battery', 12)
        self.wait_for_key('ram.status.battery.1.relative_state_of_charge', 'int 12')

    def test_two_thousand_lines_are_kept(self):
        self.driver.execute_script('''
            const pane = document.getElementById('output');
            for (let number = 0; number < 2500; number++) {
                const line = document.createElement('div');
                line.textContent = number;
                pane.append(line);
            }
            pane.scrollTop = pane.scrollHeight;''')
        self.enter('get cfg.language')
        wait_until(lambda: self.driver.execute_script(
            "const pane = document.getElementById('output');"
            "return pane.childElementCount === 2000 && pane.lastElementChild.textContent === 'int 0'"
            ' && pane.scrollHeight - pane.scrollTop - pane.clientHeight < 24'), 'not 2000 lines, or not at their end')

    # --- Who gets in

    def test_the_token_is_not_in_the_address_any_more_and_a_reload_works(self):
        self.assertEqual(self.driver.current_url, f'http://127.0.0.1:{self.desk.port}/')
        self.driver.refresh()
        self.wait_for_link('panel')
        self.wait_for_link('console')

    def test_without_a_token_the_page_says_so(self):
        self.driver.execute_script('sessionStorage.clear()')
        self.driver.get(f'http://127.0.0.1:{self.desk.port}/')
        wait_until(self.element('notice').is_displayed, 'no notice')
        self.assertEqual(self.element('notice-what').text, 'This address has no token.')
        self.assertFalse(self.element('notice-again').is_displayed())

    def test_with_a_wrong_token_the_page_says_so(self):
        self.driver.get('about:blank')
        self.driver.get(f'http://127.0.0.1:{self.desk.port}/#wrong.wrong')
        self.wait_for_link('panel', 'lost')
        self.wait_for_link('console', 'lost')
        self.assertEqual(self.element('notice-what').text, 'The terminal is gone.')
        self.assertFalse(self.element('line').is_enabled())
        self.assertFalse(self.element('battery').is_enabled())

    def test_only_the_tokens_lead_to_panel_and_console(self):
        panel, console = self.desk.tokens
        self.assertNotEqual(panel, console)
        for token in (panel, console):
            self.assertGreaterEqual(len(token), 32)
            self.assertIn(' 101 ', upgrade(self.desk.port, token))
        for token in (None, '', 'wrong', panel[:-1], panel + 'x', console.swapcase(), 'unix_socket:' + self.desk.console_path):
            with self.subTest(token=token):
                self.assertEqual(upgrade(self.desk.port, token), '')

    def test_another_origin_gets_nothing_even_with_the_token(self):
        for origin in ('http://example.invalid', f'http://example.invalid:{self.desk.port}', 'null',
                       f'http://127.0.0.1:{self.desk.port + 1}'):
            with self.subTest(origin=origin):
                self.assertNotIn(' 101 ', upgrade(self.desk.port, self.desk.tokens[1], origin))

    def test_only_page_and_scripts_are_served(self):
        status, body = get(self.desk.port, '/')
        self.assertEqual(status, 200)
        for token in self.desk.tokens:
            self.assertNotIn(token.encode(), body)
        self.assertEqual(get(self.desk.port, '/novnc/core/rfb.js')[0], 200)
        for path in ('/tokens', '/../tokens', '/%2e%2e/tokens', '/novnc/../../tokens', '/../open.html', '/panel',
                     '/novnc/vendor/pako/README.md', '//etc/passwd'):
            with self.subTest(path=path):
                self.assertEqual(get(self.desk.port, path)[0], 404)
        for path in ('/novnc/', '/novnc/core/', '/novnc/core/input/', '/novnc/vendor/', '/novnc/vendor/pako/lib/'):
            with self.subTest(path=path):
                self.assertEqual(get(self.desk.port, path), (200, b''))

    def test_nothing_listens_but_on_the_loopback(self):
        ours = {pid for process in self.desk.processes for pid in [process.pid] + descendants(process.pid)}
        listening = []
        for line in subprocess.run(['ss', '-Hltnup'], capture_output=True, text=True, check=True).stdout.splitlines():
            if ours & {int(pid) for pid in re.findall(r'pid=(\d+)', line)}:
                listening.append(line.split()[4])
        self.assertEqual(listening, [f'127.0.0.1:{self.desk.port}'])
        for host in ('127.0.0.2', '::1'):
            with self.assertRaises(OSError):
                socket.create_connection((host, self.desk.port), 5).close()

    def test_sockets_and_files_are_the_users_alone(self):
        directory = self.desk.directory
        self.assertEqual(mode(directory), 0o700)
        for name in ('panel', 'console', 'tokens', 'open.html', 'Xauthority', 'websockify.log', 'x-server.log'):
            with self.subTest(name=name):
                self.assertEqual(mode(os.path.join(directory, name)), 0o600)
        for name in ('panel', 'console'):
            self.assertTrue(stat.S_ISSOCK(os.stat(os.path.join(directory, name)).st_mode))
        self.assertEqual(mode(os.path.join(directory, 'web')), 0o700)

    def test_no_token_and_no_cookie_stands_in_a_command_line(self):
        with open(self.desk.authority, 'rb') as file:
            cookie = file.read()[-16:].hex().encode()
        secrets = [token.encode() for token in self.desk.tokens] + [cookie]
        for process in self.desk.processes:
            for pid in [process.pid] + descendants(process.pid):
                with open(f'/proc/{pid}/cmdline', 'rb') as file:
                    words = file.read()
                self.assertFalse([secret for secret in secrets if secret in words], words)

    def test_the_x_server_wants_the_cookie(self):
        empty = os.path.join(self.desk.directory, 'empty')
        with open(empty, 'wb'):
            pass
        for authority, is_let_in in ((empty, False), (self.desk.authority, True)):
            status = subprocess.run(['xdotool', 'getmouselocation'], capture_output=True, check=False, env={
                **os.environ, 'DISPLAY': self.desk.display, 'XAUTHORITY': authority}).returncode
            self.assertEqual(status == 0, is_let_in)

    def test_a_browser_can_be_sent_there_by_a_file(self):
        self.driver.get('file://' + os.path.join(self.desk.directory, 'open.html'))
        wait_until(lambda: self.driver.current_url == f'http://127.0.0.1:{self.desk.port}/', 'not led there')
        self.wait_for_link('panel')
        self.wait_for_link('console')


class Runs(unittest.TestCase):
    """Each with desks of its own: starts, failures and ends."""

    def add_desk(self):
        desk = Desk()
        self.addCleanup(desk.end)
        return desk

    def lines_of_failure(self, *words):
        process = subprocess.run([SERVE_PANEL, *words], capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual(process.returncode, 1, process.stderr)
        self.assertEqual(process.stdout, '')
        lines = process.stderr.splitlines()
        self.assertEqual(len(lines), 1, process.stderr)
        self.assertTrue(lines[0].startswith('serve-panel: '), lines[0])
        return lines[0]

    def directory(self):
        directory = tempfile.TemporaryDirectory(prefix='panel')
        self.addCleanup(directory.cleanup)
        return directory.name

    def test_two_runs_do_not_meet(self):
        desks = [self.add_desk(), self.add_desk()]
        self.assertNotEqual(desks[0].display, desks[1].display)
        self.assertNotEqual(desks[0].port, desks[1].port)
        self.assertFalse(set(desks[0].tokens) & set(desks[1].tokens))
        for this, other in (desks, desks[::-1]):
            for token in other.tokens:
                self.assertEqual(upgrade(this.port, token), '')
        desks[0].console.run('set cfg.language 3')
        self.assertEqual(desks[0].console.run('get cfg.language'), ['int 3'])
        self.assertEqual(desks[1].console.run('get cfg.language'), ['int 0'])
        desks[0].end()
        client = ConsoleClient(desks[1].console_path)
        self.assertEqual(client.run('get cfg.language'), ['int 0'])
        client.close()
        self.assertIn(' 101 ', upgrade(desks[1].port, desks[1].tokens[0]))

    def test_the_page_tells_what_is_lost_and_all_is_gone_after_the_end(self):
        desk = self.add_desk()
        browser = Browser()
        self.addCleanup(browser.end)
        driver = browser.driver

        def states():
            return [driver.find_element(By.ID, f'{name}-state').get_attribute('data-state')
                    for name in ('panel', 'console')]

        def text(name):
            return driver.find_element(By.ID, name).text

        driver.get(desk.url)
        wait_until(lambda: states() == ['good', 'good'], 'no panel or console')
        started = [pid for process in desk.processes for pid in [process.pid] + descendants(process.pid)]
        self.assertGreaterEqual(len(started), 8)  # the proxy has one for each session

        desk.terminal.end()
        wait_until(lambda: states() == ['good', 'lost'], 'the console is not lost')
        self.assertEqual(text('notice-what'), 'The console is lost.')
        self.assertFalse(driver.find_element(By.ID, 'line').is_enabled())
        desk.x_server.end()
        wait_until(lambda: states() == ['lost', 'lost'], 'the panel is not lost')
        self.assertEqual(text('notice-what'), 'The terminal is gone.')
        self.assertTrue(driver.find_element(By.ID, 'notice-again').is_displayed())
        self.assertEqual(desk.page.end(), 128 + signal.SIGTERM)
        desk.panel.end()
        wait_until(lambda: not [pid for pid in started if is_running(pid)], 'processes are left')
        for name in ('panel', 'console', 'tokens', 'open.html', 'Xauthority', 'web'):
            self.assertFalse(os.path.lexists(os.path.join(desk.directory, name)), name)
        number = desk.display[1:]
        self.assertFalse(os.path.exists(f'/tmp/.X{number}-lock') and is_ours(number, started))
        with self.assertRaises(OSError):
            socket.create_connection(('127.0.0.1', desk.port), 5).close()

    def test_a_lost_panel_comes_back_when_asked_for(self):
        desk = self.add_desk()
        browser = Browser()
        self.addCleanup(browser.end)
        driver = browser.driver

        def state(name):
            return driver.find_element(By.ID, f'{name}-state').get_attribute('data-state')

        driver.get(desk.url)
        wait_until(lambda: [state('panel'), state('console')] == ['good', 'good'], 'no panel or console')
        proxy = next(pid for pid in descendants(desk.page.pid) if descendants(pid))
        for pid in descendants(proxy):
            os.kill(pid, signal.SIGKILL)
        wait_until(lambda: [state('panel'), state('console')] == ['lost', 'lost'], 'nothing is lost')
        driver.find_element(By.ID, 'notice-again').click()
        wait_until(lambda: [state('panel'), state('console')] == ['good', 'good'], 'they have not come back')
        self.assertFalse(driver.find_element(By.ID, 'notice').is_displayed())
        self.assertTrue(driver.find_element(By.ID, 'line').is_enabled())

    def test_it_ends_when_what_it_started_ends(self):
        desk = self.add_desk()
        for process, name in ((desk.page, 'websockify'), (desk.x_server, 'the X server')):
            child = descendants(process.pid)[0]
            os.kill(child, signal.SIGKILL)
            self.assertEqual(process.status(), 1)
            self.assertIn(f'serve-panel: {name} ended with status', process.text())
        number = desk.display[1:]
        self.assertFalse(os.path.exists(f'/tmp/.X{number}-lock') and is_ours(number, [child]))

    def test_what_it_started_ends_when_it_is_killed(self):
        desk = self.add_desk()
        for process in (desk.page, desk.x_server):
            started = descendants(process.pid)
            self.assertTrue(started)
            process.end(signal.SIGKILL)
            wait_until(lambda started=started: not [pid for pid in started if is_running(pid)], 'processes are left')

    def test_it_ends_with_what_has_started_it(self):
        directory = self.directory()
        shell = Process(directory, 'shell', ['/bin/sh', '-c', f'"{SERVE_PANEL}" x-server "{directory}" & wait'])
        shell.value('XAUTHORITY')
        started = descendants(shell.pid)
        self.assertEqual(len(started), 2)
        shell.end(signal.SIGKILL)
        wait_until(lambda: not [pid for pid in started if is_running(pid)], 'processes are left')
        wait_until(lambda: not os.path.exists(os.path.join(directory, 'panel')), 'the socket is left')

    def test_a_directory_that_will_not_do_is_told(self):
        directory = self.directory()
        for words in (['x-server', directory], ['page', directory, 'console']):
            os.chmod(directory, 0o755)
            self.assertIn('must be of this user, with mode 0700', self.lines_of_failure(*words))
            os.chmod(directory, 0o700)
            self.assertIn('No such file', self.lines_of_failure(words[0], directory + '/none', *words[2:]))
        deep = os.path.join(directory, 'd' * 100)
        os.mkdir(deep, 0o700)
        self.assertIn('too long for a socket', self.lines_of_failure('x-server', deep))
        blank = os.path.join(directory, 'a b:c')
        os.mkdir(blank, 0o700)
        self.assertIn('has a colon or a blank in it', self.lines_of_failure('x-server', blank))

    def test_a_page_without_a_panel_is_told(self):
        directory = self.directory()
        self.assertIn('there is no panel at', self.lines_of_failure('page', directory, directory + '/console'))

    def test_a_port_that_is_taken_is_told(self):
        directory = self.directory()
        with socket.socket(socket.AF_UNIX) as panel, socket.create_server(('127.0.0.1', 0)) as other:
            panel.bind(os.path.join(directory, 'panel'))
            port = other.getsockname()[1]
            self.assertIn(f'port {port} of 127.0.0.1: Address already in use', self.lines_of_failure(
                'page', directory, os.path.join(directory, 'panel'), '--port', str(port)))

    def test_a_directory_of_another_run_is_left_alone(self):
        desk = self.add_desk()
        self.assertIn('is there already', self.lines_of_failure('x-server', desk.directory))
        self.assertIn('is there already', self.lines_of_failure('page', desk.directory, desk.console_path))
        self.assertIn(' 101 ', upgrade(desk.port, desk.tokens[0]))

    def test_a_wrong_command_line_is_told(self):
        for words in ([], ['fly'], ['x-server'], ['page', '/tmp'], ['page', '/tmp', 'console', '--port', 'x']):
            with self.subTest(words=words):
                process = subprocess.run([SERVE_PANEL, *words], capture_output=True, text=True, timeout=60, check=False)
                self.assertEqual(process.returncode, 2)
                self.assertIn('usage: serve-panel', process.stderr)


def is_ours(number, pids):
    """True if the lock of that X server names one of the processes."""
    try:
        with open(f'/tmp/.X{number}-lock', encoding='ascii') as file:
            return int(file.read()) in pids
    except (OSError, ValueError):
        return False


if __name__ == '__main__':
    unittest.main(verbosity=2)
