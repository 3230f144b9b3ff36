"""A desk for the tests of the page: the terminal, the display in its X server and the page, each a process of its
own, and a browser without a window. Everything is awaited, with a limit, and ended with the desk."""
import contextlib
import ctypes
import fcntl
import os
import re
import shutil
import signal
import socket
import subprocess
import tempfile
import time

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service

SOURCE = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
BUILD = os.environ.get('PROJECT_BINARY_DIR', os.path.join(SOURCE, 'build', 'desk'))
SCREENSHOTS = os.path.join(BUILD, 'misc')
SERVE_PANEL = os.path.join(SOURCE, 'tools', 'serve-panel')
PR_SET_PDEATHSIG = 1
PATIENCE = 120  # seconds that anything may take on a busy machine


@contextlib.contextmanager
def screenshot_lock():
    """Displays of one build write their screenshots to one directory, and the names tell only the second. Who takes
    one and reads it holds this meanwhile, like the simulated terminal does for its pictures. Gives the names of those
    that are there and stay."""
    os.makedirs(SCREENSHOTS, exist_ok=True)
    directory = os.open(SCREENSHOTS, os.O_RDONLY | os.O_DIRECTORY)
    try:
        fcntl.flock(directory, fcntl.LOCK_EX)
        yield os.listdir(directory)
    finally:
        os.close(directory)


def wait_until(condition, what, patience=PATIENCE):
    """Returns the first true value of the condition."""
    deadline = time.monotonic() + patience
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f'{what} within {patience} s')
        time.sleep(0.02)


def is_running(pid):
    """False for what has ended, also where nobody has asked for its status yet."""
    try:
        with open(f'/proc/{pid}/stat', encoding='ascii', errors='replace') as text:
            return text.read().rpartition(')')[2].split()[0] not in 'ZX'
    except OSError:
        return False


def descendants(pid):
    found = []
    for child in subprocess.run(['ps', '-o', 'pid=', '--ppid', str(pid)], capture_output=True, text=True,
                                check=False).stdout.split():
        found += [int(child)] + descendants(int(child))
    return found


def end_with_parent():
    """So that a test that is killed leaves nothing behind."""
    ctypes.CDLL(None).prctl(PR_SET_PDEATHSIG, signal.SIGTERM, 0, 0, 0)


class Process:
    """A program whose two outputs go into one file."""

    def __init__(self, directory, name, command, environment=None):
        self.output = os.path.join(directory, name + '.output')
        with open(self.output, 'wb') as output:
            self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT,
                                            env={**os.environ, **(environment or {})},
                                            preexec_fn=end_with_parent)
        self.pid = self.process.pid

    def text(self):
        with open(self.output, encoding='utf-8', errors='replace') as text:
            return text.read()

    def value(self, name):
        """Of a line NAME=VALUE, once it is there."""
        def find():
            for line in self.text().splitlines():
                if line.startswith(name + '='):
                    return line[len(name) + 1:]
            if self.process.poll() is not None:
                raise AssertionError(f'ended with {self.process.returncode}: {self.text()}')
            return None
        return wait_until(find, f'no line {name}= in {self.output}')

    def end(self, number=signal.SIGTERM):
        """Returns the exit status."""
        if self.process.poll() is None:
            self.process.send_signal(number)
        return self.status()

    def status(self):
        try:
            return self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
            raise


class ConsoleClient:
    """A session of the terminal's console, on its socket."""

    def __init__(self, path):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(PATIENCE)
        try:
            self.socket.connect(path)
        except OSError:
            self.socket.close()
            raise
        self.lines = self.socket.makefile('r', encoding='utf-8', newline='\n')

    def run(self, line):
        self.socket.sendall((line + '\n').encode())
        output = []
        for answer in self.lines:
            answer = answer.rstrip('\n')
            if answer.startswith('= '):
                if answer != '= ok':
                    raise AssertionError(f'{line}: {answer}: {output}')
                return output
            if not answer.startswith('* '):
                output.append(answer)
        raise AssertionError(f'{line}: the console has gone')

    def close(self):
        self.lines.close()
        self.socket.close()


class Desk:
    """All of a run with --browser, but its bash."""
    count = 0

    def __init__(self):
        Desk.count += 1
        self.directory = tempfile.mkdtemp(prefix='panel')
        self.address = f'unix*page.{os.getpid()}.{Desk.count}'
        self.log = os.path.join(self.directory, 'panel.log')
        self.console_path = os.path.join(self.directory, 'console')
        self.processes = []
        self.console = None
        try:
            self.start()
        except BaseException:
            self.end()
            raise

    def add(self, name, command, environment=None):
        process = Process(self.directory, name, command, environment)
        self.processes.insert(0, process)
        return process

    def start(self):
        self.x_server = self.add('x-server', [SERVE_PANEL, 'x-server', self.directory])
        self.display = self.x_server.value('DISPLAY')
        self.authority = self.x_server.value('XAUTHORITY')
        self.terminal = self.add('terminalsim', [
            os.path.join(BUILD, 'terminalsim'), '--address', self.address, '--still', '--quiet',
            '--values', os.path.join(SOURCE, 'sim', 'initial_values.txt'), '--socket', self.console_path])
        self.console = wait_until(self.connect, f'no console: {self.terminal.text()}')
        self.start_panel()
        self.page = self.add('page', [SERVE_PANEL, 'page', self.directory, self.console_path])
        self.url = self.page.value('ADDRESS')
        self.port = int(self.url.split(':')[2].split('/')[0])
        self.tokens = self.url.partition('#')[2].split('.')

    def start_panel(self):
        self.panel_start = len(self.log_lines())
        self.panel = self.add('lumenpanel', [os.path.join(BUILD, 'lumenpanel'), 'logQtDebug'], {
            'CBUS_ADDR': self.address, 'DISPLAY': self.display, 'XAUTHORITY': self.authority,
            'QT_QPA_PLATFORM': 'xcb', 'QT_SCALE_FACTOR': '1',
            'FONTCONFIG_FILE': os.path.join(SOURCE, 'res', 'fonts', 'fonts.conf'),
            'LD_PRELOAD': os.path.join(BUILD, 'libsyslogtap.so'), 'SYSLOGTAP_FILE': self.log})
        self.wait_for_log('getActiveBundlesStatusStr|Successfully translated statusTextId=1', self.panel_start)

    def restart_panel(self):
        self.processes.remove(self.panel)
        self.panel.end()
        self.start_panel()

    def connect(self):
        try:
            return ConsoleClient(self.console_path)
        except (FileNotFoundError, ConnectionRefusedError):
            return None

    def log_lines(self):
        try:
            with open(self.log, encoding='ascii', errors='replace') as text:
                return text.read().splitlines()
        except OSError:
            return []

    def wait_for_log(self, expression, first=0):
        return wait_until(lambda: [line for line in self.log_lines()[first:] if re.search(expression, line)],
                          f'no log line {expression}')

    def end(self):
        if self.console:
            self.console.close()
        try:
            return [process.end() for process in self.processes]
        finally:
            shutil.rmtree(self.directory, ignore_errors=True)


class Browser:
    def __init__(self, width=1280, height=900):
        self.profile = tempfile.mkdtemp(prefix='panel')
        options = Options()
        options.binary_location = '/usr/bin/chromium'
        for argument in ('--headless=new', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
                         '--disable-background-networking', '--disable-component-update', '--disable-sync',
                         '--disable-dev-shm-usage', '--no-proxy-server', f'--user-data-dir={self.profile}'):
            options.add_argument(argument)
        options.set_capability('goog:loggingPrefs', {'browser': 'ALL'})
        try:
            self.driver = webdriver.Chrome(service=Service('/usr/bin/chromedriver'), options=options)
        except BaseException:
            shutil.rmtree(self.profile, ignore_errors=True)
            raise
        self.resize(width, height)

    def resize(self, width, height, density=1):
        self.driver.execute_cdp_cmd('Emulation.setDeviceMetricsOverride', {
            'width': width, 'height': height, 'deviceScaleFactor': density, 'mobile': width < 600})

    def end(self):
        self.driver.quit()
        shutil.rmtree(self.profile, ignore_errors=True)
