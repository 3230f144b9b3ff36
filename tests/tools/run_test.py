#!/usr/bin/env python3
"""The script ./run on a terminal of its own (a pty), with the programs of a build: what it starts, that all of it
ends in each way of ending, that two runs don't meet, and what it says of mistakes.

The build is named by PROJECT_BINARY_DIR. Nothing is installed and nothing built.
"""
import ctypes
import os
import pathlib
import pty
import re
import select
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PATIENCE = 120  # seconds, for a busy machine
PROMPT = 'terminal> '
BROWSER = all(shutil.which(program) for program in ('Xtigervnc', 'websockify'))


def environment(directory, **more):
    chosen = {name: value for name, value in os.environ.items()
              if name not in ('DISPLAY', 'WAYLAND_DISPLAY', 'CBUS_ADDR', 'APPMGR_PID')}
    return dict(chosen, LUMENPANEL_BUILD=os.environ['PROJECT_BINARY_DIR'], XDG_RUNTIME_DIR=directory, **more)


class XServer:
    """A desktop, without a window manager."""

    def __init__(self):
        reader, writer = os.pipe()
        # No number that other tests' servers take once this one has gone, since the display looks for it again.
        number = f':{1000 + os.getpid() % 30000}'
        self.process = subprocess.Popen(['Xvfb', number, '-displayfd', str(writer), '-screen', '0', '640x480x24',
                                         '-nolisten', 'tcp'], pass_fds=[writer], stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as answer:
            self.display = ':' + answer.readline().strip()

    def windows(self):
        """The panel's, as far as they are shown: for a moment that is the black one which stands before it."""
        found = subprocess.run(['xdotool', 'search', '--onlyvisible', '--class', 'lumenpanel'], text=True,
                               capture_output=True, env=dict(os.environ, DISPLAY=self.display))
        return [int(window) for window in found.stdout.split()]

    def wait_for_panel(self):
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            if self.windows():
                return
            time.sleep(0.1)
        raise AssertionError('the panel shows no window')

    def close_window(self, window):
        """Asks it to close, as a window manager does when its cross is clicked; nothing happens if it has gone."""

        class Message(ctypes.Structure):
            _fields_ = [('type', ctypes.c_int), ('serial', ctypes.c_ulong), ('send_event', ctypes.c_int),
                        ('display', ctypes.c_void_p), ('window', ctypes.c_ulong), ('message_type', ctypes.c_ulong),
                        ('format', ctypes.c_int), ('data', ctypes.c_long * 5), ('rest', ctypes.c_long * 12)]

        x11 = ctypes.CDLL('libX11.so.6')
        x11.XOpenDisplay.restype = ctypes.c_void_p
        x11.XInternAtom.restype = ctypes.c_ulong
        x11.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
        x11.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long, ctypes.c_void_p]
        x11.XCloseDisplay.argtypes = [ctypes.c_void_p]
        self.ignore = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(lambda display, error: 0)
        x11.XSetErrorHandler(self.ignore)
        display = x11.XOpenDisplay(self.display.encode())
        message = Message(type=33, display=display, window=window, format=32,  # ClientMessage
                          message_type=x11.XInternAtom(display, b'WM_PROTOCOLS', 0))
        message.data[0] = x11.XInternAtom(display, b'WM_DELETE_WINDOW', 0)
        x11.XSendEvent(display, window, 0, 0, ctypes.byref(message))
        x11.XCloseDisplay(display)

    def end(self):
        self.process.terminate()
        self.process.wait()


def processes_in(directory):
    """Those that were started by a run with this runtime directory: each has it in its environment."""
    mark = f'XDG_RUNTIME_DIR={directory}'.encode()
    found = []
    for entry in pathlib.Path('/proc').glob('[0-9]*'):
        try:
            if mark in (entry / 'environ').read_bytes().split(b'\0'):
                found.append((entry / 'cmdline').read_bytes().replace(b'\0', b' ').decode(errors='replace'))
        except OSError:
            pass
    return [line for line in found if line]


class Run:
    """./run as somebody starts it at a terminal."""

    def __init__(self, *arguments, **more):
        self.directory = tempfile.mkdtemp(prefix='run-')
        os.chmod(self.directory, 0o700)
        self.output = ''
        self.status = None
        self.pid, self.terminal = pty.fork()
        if self.pid == 0:
            os.chdir(self.directory)
            os.execve(ROOT / 'run', ['run', *arguments], environment(self.directory, **more))

    def read(self, seconds):
        if self.terminal is None or not select.select([self.terminal], [], [], seconds)[0]:
            return False
        try:
            data = os.read(self.terminal, 65536)
        except OSError:  # nobody holds the other end any more
            return False
        self.output += data.decode(errors='replace')
        return bool(data)

    def wait_for(self, text):
        deadline = time.monotonic() + PATIENCE
        while text not in self.output:
            if time.monotonic() > deadline or (not self.read(0.1) and self.has_ended()):
                raise AssertionError(f'"{text}" was not said:\n{self.output}')

    def wait_for_prompt(self, count=1):
        deadline = time.monotonic() + PATIENCE
        while self.output.count(PROMPT) < count:
            if time.monotonic() > deadline or (not self.read(0.1) and self.has_ended()):
                raise AssertionError(f'no prompt {count}:\n{self.output}')

    def type(self, text):
        os.write(self.terminal, text.encode())

    def ask(self, line):
        """A line at the prompt, until the next one."""
        prompts = self.output.count(PROMPT)
        self.type(line + '\r')
        self.wait_for_prompt(prompts + 1)

    def wait_until_display_runs(self):
        """Asks the console until it does."""
        deadline = time.monotonic() + PATIENCE
        while 'state running' not in self.output:
            if time.monotonic() > deadline:
                raise AssertionError(f'the display does not run:\n{self.output}')
            self.ask('display')
            self.read(0.1)

    def has_ended(self):
        if self.status is None:
            pid, status = os.waitpid(self.pid, os.WNOHANG)
            if pid:
                self.status = os.waitstatus_to_exitcode(status)
        return self.status is not None

    def wait_for_end(self):
        deadline = time.monotonic() + PATIENCE
        while not self.has_ended():
            if time.monotonic() > deadline:
                raise AssertionError(f'it does not end:\n{self.output}')
            self.read(0.1)
        while self.read(0.1):
            pass
        return self.status

    def close_terminal(self):
        os.close(self.terminal)
        self.terminal = None

    def address(self):
        return re.search(r'listening on (\S+)', self.output).group(1)

    def clean_up(self):
        if not self.has_ended():
            os.kill(self.pid, signal.SIGKILL)
            os.waitpid(self.pid, 0)
        if self.terminal is not None:
            os.close(self.terminal)
        shutil.rmtree(self.directory, ignore_errors=True)


class RunTest(unittest.TestCase):
    def start(self, *arguments, **more):
        run = Run(*arguments, **more)
        self.addCleanup(run.clean_up)
        return run

    def started(self, *arguments, **more):
        run = self.start(*arguments, **more)
        run.wait_for_prompt()
        run.wait_until_display_runs()
        return run

    def assert_all_gone(self, run):
        deadline = time.monotonic() + PATIENCE
        while processes_in(run.directory) and time.monotonic() < deadline:
            time.sleep(0.05)
        self.assertEqual(processes_in(run.directory), [])
        self.assertEqual(os.listdir(run.directory), [])

    def ways_of_ending(self, *arguments):
        def close_terminal(run):
            run.close_terminal()

        ways = (
            ('Ctrl-C', lambda run: run.type('\x03'), {130}),
            ('the closing of the terminal', close_terminal, {129, -signal.SIGHUP}),
            ('SIGTERM', lambda run: os.kill(run.pid, signal.SIGTERM), {143}),
            ('quit', lambda run: run.type('quit\r'), {0}),
        )
        for name, end, statuses in ways:
            with self.subTest(name):
                run = self.started(*arguments)
                end(run)
                self.assertIn(run.wait_for_end(), statuses)
                self.assert_all_gone(run)

    def test_every_way_of_ending_ends_all_of_it_unseen(self):
        self.ways_of_ending('--unseen')

    @unittest.skipUnless(BROWSER, 'the programs behind the page are not installed')
    def test_every_way_of_ending_ends_all_of_it_in_a_browser(self):
        self.ways_of_ending('--browser')

    @unittest.skipUnless(BROWSER, 'the programs behind the page are not installed')
    def test_without_a_desktop_the_page_is_told_before_the_first_prompt(self):
        run = self.started()
        self.assertRegex(run.output.split(PROMPT)[0], r'the panel is at http://127\.0\.0\.1:\d+/#\S+\r?\n')

    def test_the_closing_of_the_window_ends_all_of_it(self):
        desktop = XServer()
        self.addCleanup(desktop.end)
        run = self.started(DISPLAY=desktop.display)
        desktop.wait_for_panel()
        deadline = time.monotonic() + PATIENCE
        while not run.has_ended() and time.monotonic() < deadline:
            for window in desktop.windows():
                desktop.close_window(window)
            run.read(0.1)
        self.assertEqual(run.wait_for_end(), 0, run.output)
        self.assert_all_gone(run)

    def test_a_desktop_that_goes_away_ends_all_of_it(self):
        desktop = XServer()
        self.addCleanup(desktop.end)
        run = self.started(DISPLAY=desktop.display)
        desktop.wait_for_panel()
        desktop.end()
        self.assertEqual(run.wait_for_end(), 1)
        self.assertIn('display', run.output)
        self.assert_all_gone(run)

    def test_the_end_of_the_terminal_alone_ends_all_of_it(self):
        run = self.started('--unseen')
        subprocess.run(['pkill', '-KILL', '-f', f'terminalsim.*{run.directory}'], check=True)
        self.assertNotEqual(run.wait_for_end(), 0)
        self.assertEqual(processes_in(run.directory), [])

    def test_two_runs_do_not_meet(self):
        one, other = self.started('--unseen'), self.started('--unseen')
        self.assertNotEqual(one.address(), other.address())
        one.ask('set ram.desk.mine 1')
        other.ask('get ram.desk.mine')
        self.assertIn('not in the database', other.output)
        self.assertNotIn('another run has the stored settings', one.output)
        self.assertIn('another run has the stored settings', other.output)
        one.type('quit\r')
        self.assertEqual(one.wait_for_end(), 0)
        prompts = other.output.count(PROMPT)
        other.type('display\r')
        other.wait_for_prompt(prompts + 1)
        self.assertTrue(other.output.rstrip().endswith(PROMPT.strip()))
        self.assertFalse(other.has_ended())

    def test_a_crash_is_told_and_the_display_is_there_again(self):
        run = self.started('--unseen')
        run.type('display kill SEGV\r')
        run.wait_for('signal 11')
        run.output = ''
        run.type('\r')
        run.wait_until_display_runs()
        self.assertIn('restarts 1', run.output)

    def test_a_picture(self):
        run = self.start('--picture', 'panel.png')
        self.assertEqual(run.wait_for_end(), 0, run.output)
        picture = pathlib.Path(run.directory, 'panel.png').read_bytes()
        self.assertEqual(picture[:8], b'\x89PNG\r\n\x1a\n')
        self.assertEqual((int.from_bytes(picture[16:20], 'big'), int.from_bytes(picture[20:24], 'big')), (1024, 256))

    def story(self, text):
        file = tempfile.NamedTemporaryFile('w', suffix='.scenario', delete=False)
        self.addCleanup(os.unlink, file.name)
        with file:
            file.write(text)
        return file.name

    def test_a_story_that_ends_well(self):
        run = self.start('--scenario', self.story('signal 45.0\nexpect live within 60\npicture one\n'), '--pictures', 'shots',
                         '--speed', '5')
        self.assertEqual(run.wait_for_end(), 0, run.output)
        self.assertEqual(os.listdir(os.path.join(run.directory, 'shots')), ['01_one.png'])

    def test_a_story_that_fails_says_where_and_why(self):
        name = self.story('# a comment\nexpect cfg.language 5 within 0.2\n')
        run = self.start('--scenario', name)
        self.assertEqual(run.wait_for_end(), 1)
        self.assertIn(f'{name}:2: ', run.output)
        self.assert_all_gone(run)

    def test_mistakes_are_one_line_and_status_1(self):
        for arguments, text in (
                (('--nonsense',), 'unknown option --nonsense'),
                (('--speed',), '--speed needs an argument'),
                (('--picture', 'panel.jpg'), 'give a name that ends in .png'),
                (('--picture', 'none/panel.png'), 'there is no directory none'),
                (('--picture', 'a.png', '--tour', 'b'), 'one of --picture, --scenario and --tour'),
                (('--scenario', 'none'), 'cannot read none'),
                (('--pictures', 'shots'), '--pictures belongs to --scenario'),
                (('--values', 'none'), 'cannot read none')):
            with self.subTest(arguments):
                run = self.start(*arguments)
                self.assertEqual(run.wait_for_end(), 1)
                self.assertIn(text, run.output)
                self.assertEqual(processes_in(run.directory), [])

    def test_a_wrong_speed_is_told(self):
        run = self.start('--unseen', '--speed', '0')
        self.assertNotEqual(run.wait_for_end(), 0)
        self.assertIn('--speed takes a number from 1 to 1000', run.output)


if __name__ == '__main__':
    unittest.main(verbosity=2)
