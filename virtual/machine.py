"""The emulated phone, driven from outside: its keys, what its screen says, its card, its power."""

import json
import os
import shutil
import socket
import subprocess
import tempfile
import threading
import time

# The phone's keys by the names of the emulator's keyboard.
KEYS = {
    "up": "up", "down": "down", "left": "left", "right": "right", "select": "ret",
    "soft1": "f1", "soft2": "f2", "star": "asterisk", "end": "f4", "clear": "backspace",
    **{str(digit): str(digit) for digit in range(10)},
}
HIGHLIGHTED = "#ffffff"
PATIENCE = 60  # seconds that anything on the phone may take


class Failed(Exception):
    """The phone did not do what was due."""


class Phone:
    """A phone of the folder `build`, with disks of its own in `folder`, which stay when it ends."""

    def __init__(self, build, folder, options=(), display="none", memory=64, extra=()):
        self.folder = folder
        os.makedirs(folder, exist_ok=True)
        for disk in ("data", "card"):
            if not os.path.exists(self.path(disk + ".img")):
                shutil.copyfile(f"{build}/{disk}.img", self.path(disk + ".img"))
        self.program = None  # that has told of its screen last
        self.texts = []      # [text, colour] of all that it paints, from top to bottom
        self.told = 0        # how often
        self._change = threading.Condition(threading.RLock())
        command = [
            "qemu-system-arm", "-M", "virt,highmem=off", "-cpu", "cortex-a7", "-m", str(memory),
            "-kernel", f"{build}/vmlinuz", "-initrd", f"{build}/initrd.gz", "-append",
            "console=ttyS1 quiet rw init=/init fbcon=map:9 cma=1M video=Virtual-1:240x320 "
            + " ".join("phone." + option for option in options),
            "-global", "virtio-mmio.force-legacy=false", "-no-reboot",
            "-nic", "none",
            "-device", "virtio-gpu-device,xres=240,yres=320", "-device", "virtio-keyboard-device",
            "-drive", f"if=none,id=system,file={build}/system.img,format=raw,readonly=on",
            "-device", "virtio-blk-device,drive=system",
            # Each write reaches the file at once: what the phone has not written yet is lost with
            # the emulator, and nothing else.
            "-drive", f"if=none,id=data,file={self.path('data.img')},format=raw,cache=writethrough",
            "-device", "virtio-blk-device,drive=data",
            "-drive", f"if=none,id=card,file={self.path('card.img')},format=raw,cache=writethrough",
            "-device", "sdhci-pci", "-device", "sd-card,id=slot,drive=card",
            "-chardev", f"socket,id=words,path={self.path('words')},server=on,wait=off",
            "-chardev", f"file,id=console,path={self.path('console.log')}",
            "-device", "pci-serial-2x,chardev1=words,chardev2=console",
            "-serial", f"unix:{self.path('shell')},server=on,wait=off", "-display", display,
            "-qmp", f"unix:{self.path('qmp')},server=on,wait=off", *extra,
        ]
        self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL)
        self._qmp = self._connect("qmp").makefile("rw", encoding="utf-8")
        self._answer()
        self.qmp("qmp_capabilities")
        threading.Thread(target=self._listen, args=(self._connect("words"),), daemon=True).start()
        self._shell = self._connect("shell")
        self._is_ready = False

    def path(self, name):
        return os.path.join(self.folder, name)

    def _connect(self, name):
        end = time.monotonic() + PATIENCE
        while True:
            connection = socket.socket(socket.AF_UNIX)
            try:
                connection.connect(self.path(name))
                return connection
            except OSError:
                connection.close()
                if time.monotonic() > end or self.process.poll() is not None:
                    raise Failed("the emulator does not start")
                time.sleep(0.05)

    def _listen(self, connection):
        for line in connection.makefile("rb"):
            try:
                said = json.loads(line)
            except ValueError:
                continue  # cut off by a program's end
            with self._change:
                self.program = os.path.basename(said["program"])
                self.texts = said["texts"]
                self.told += 1
                self._change.notify_all()

    def _answer(self):
        while True:
            line = self._qmp.readline()
            if not line:
                raise Failed("the emulator has ended")
            answer = json.loads(line)
            if "event" not in answer:
                return answer

    def qmp(self, command, **arguments):
        """A command of the emulator's own, and its answer."""
        self._qmp.write(json.dumps({"execute": command, "arguments": arguments}) + "\n")
        self._qmp.flush()
        answer = self._answer()
        if "error" in answer:
            raise Failed(f"{command}: {answer['error']['desc']}")
        return answer.get("return")

    def press(self, *keys, hold=60):
        """Presses the keys one after another, each for `hold` milliseconds."""
        for key in keys:
            codes = ["shift", "3"] if key == "hash" else [KEYS[key]]
            self.qmp("send-key", keys=[{"type": "qcode", "data": code} for code in codes],
                     **{"hold-time": hold})
            time.sleep((hold + 60) / 1000)

    def press_and_wait(self, key):
        """As `press`, and waits for the screen to change, though not for long: not every key does
        something."""
        with self._change:
            told = self.told
        self.press(key)
        with self._change:
            self._change.wait_for(lambda: self.told > told, 2)

    def rest(self, seconds=0.4):
        """Waits until the screen has not changed for so long."""
        with self._change:
            while self._change.wait(seconds):
                pass

    def words(self):
        """The texts on the screen, from top to bottom."""
        with self._change:
            return [text for text, _ in self.texts]

    def screen(self):
        with self._change:
            return f"{self.program}: {' | '.join(text for text, _ in self.texts)}"

    def wait(self, *texts, program="quiver", without=(), patience=PATIENCE):
        """Waits until the program shows all these texts, each within one that it paints."""
        def there():
            said = [text for text, _ in self.texts]
            return (self.program == program
                    and all(any(text in one for one in said) for text in texts)
                    and not any(text in one for text in without for one in said))
        with self._change:
            if not self._change.wait_for(there, patience):
                seen = ' | '.join(text for text, _ in self.texts)
                raise Failed(f"not in time: {', '.join(texts)}\n  seen: {self.program}: {seen}")

    def _is_highlighted(self, row):
        with self._change:
            return [row, HIGHLIGHTED] in self.texts

    def go_to(self, row, program="quiver"):
        """Moves the highlight down to the row of this name, which is on the screen or below."""
        for _ in range(60):
            self.wait(program=program)
            if self._is_highlighted(row):
                time.sleep(0.5)  # a slow phone may still have a key before it
                if self._is_highlighted(row):
                    return
                continue
            self.press_and_wait("down")
        raise Failed(f"no row {row}\n  seen: {self.screen()}")

    def run(self, command, patience=PATIENCE):
        """What a shell on the phone answers to the command, one line; its errors, too."""
        if not self._is_ready:
            self._hear(b"ready\n", patience)
            self._is_ready = True
        mark = f"done-{time.monotonic_ns()}"
        request = f"{command}; echo; echo {mark}\n".encode()
        self._shell.sendall(request)
        result = self._hear(mark.encode() + b"\n", patience)
        return result.decode("utf-8", "surrogateescape").strip("\n")

    def _hear(self, end, patience):
        """What the phone's shell says up to `end`."""
        self._shell.settimeout(patience)
        said = b""
        while not said.endswith(end):
            try:
                said += self._shell.recv(4096)
            except TimeoutError:
                raise Failed(f"no answer from the phone, only {said!r}") from None
        return said[:-len(end)]

    def picture(self, name):
        """Saves what the screen shows as a PNG."""
        with tempfile.NamedTemporaryFile(suffix=".ppm") as shot:
            self.qmp("screendump", filename=shot.name)
            time.sleep(0.1)
            subprocess.run(["convert", shot.name, name], check=True)

    def pull_card(self):
        self.qmp("blockdev-open-tray", id="slot", force=True)
        self.qmp("blockdev-remove-medium", id="slot")

    def insert_card(self):
        self.qmp("blockdev-change-medium", id="slot", filename=self.path("card.img"), format="raw")

    def cut_power(self):
        """As it is without a battery: what has not reached the disks is gone."""
        self.process.kill()
        self.process.wait()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.cut_power()
