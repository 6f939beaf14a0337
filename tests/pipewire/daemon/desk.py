"""A desktop's sound without hardware: a PipeWire daemon with a session manager, a microphone array and a loudspeaker that are
null sinks, and the process with the echo canceller as it is installed. Everything stands in one folder and ends with it.
"""
import contextlib
import json
import os
import pathlib
import re
import signal
import subprocess
import time

SHIPPED = pathlib.Path(__file__).resolve().parents[3] / "pipewire" / "se-echo-cancel.conf"
PATIENCE = 30  # seconds for anything that is waited for
LONGEST = 120  # seconds for which any program of a test runs

MICROPHONES, LOUDSPEAKER, CANCELLED = "microphones", "loudspeaker", "se_echo_cancel_microphone"
OTHER_MICROPHONE = "other_microphone"

# As the daemon of a desktop. `access.force` would keep the session manager from seeing anything.
MAIN = """
context.properties = { core.daemon = true core.name = pipewire-0 log.level = 2 %(clock)s }
context.spa-libs = { audio.convert.* = audioconvert/libspa-audioconvert support.* = support/libspa-support }
context.modules = [
    { name = libpipewire-module-protocol-native }
    { name = libpipewire-module-metadata }
    { name = libpipewire-module-spa-device-factory }
    { name = libpipewire-module-spa-node-factory }
    { name = libpipewire-module-client-node }
    { name = libpipewire-module-client-device }
    { name = libpipewire-module-access }
    { name = libpipewire-module-adapter }
    { name = libpipewire-module-link-factory }
    { name = libpipewire-module-session-manager }
]
context.objects = [
    { factory = spa-node-factory
      args = { factory.name = support.node.driver node.name = Dummy-Driver node.group = pipewire.dummy priority.driver = 20000 } }
    { factory = adapter
      args = { factory.name = support.null-audio-sink node.name = microphones media.class = Audio/Sink object.linger = true
               audio.position = [ AUX0 AUX1 AUX2 AUX3 AUX4 AUX5 AUX6 AUX7 ] monitor.channel-volumes = false } }
    { factory = adapter
      args = { factory.name = support.null-audio-sink node.name = loudspeaker media.class = Audio/Sink object.linger = true
               audio.position = [ FL FR ] } }
    { factory = adapter
      args = { factory.name = support.null-audio-sink node.name = other_microphone media.class = Audio/Source/Virtual
               object.linger = true priority.session = 2000 audio.position = [ AUX0 AUX1 AUX2 AUX3 AUX4 AUX5 AUX6 AUX7 ] } }
]
"""


def configuration(engines, changes=(), arguments="", channel_map="[ 1 2 3 4 5 6 7 0 ]"):
    """The configuration that is shipped, for the devices of this desk. `changes`: pairs of pattern and replacement."""
    text = SHIPPED.read_text()
    changes = [
        (r'#target\.object = "alsa_input[^\n]*', f"target.object = {MICROPHONES} stream.capture.sink = true"),
        (r'#target\.object = "alsa_output[^\n]*', f"target.object = {LOUDSPEAKER}"),
        (r"se\.channel-map = [^\n]*", f'se.channel-map = {channel_map} se.folder = "{engines}" {arguments}'),
        *changes,
    ]
    for pattern, replacement in changes:
        text, count = re.subn(pattern, replacement, text, count=1)
        assert count == 1, f"the configuration has nothing like {pattern}"
    return text


def until(condition, what):
    """Waits for a condition; result: its first true value."""
    deadline = time.monotonic() + PATIENCE
    while time.monotonic() < deadline:
        if found := condition():
            return found
        time.sleep(0.02)
    raise AssertionError(f"waited {PATIENCE} s for {what}")


class Desk(contextlib.ExitStack):
    def __init__(self, folder, build, clock):
        super().__init__()
        self.folder = pathlib.Path(folder)
        self.build = pathlib.Path(build).resolve()
        self.engines = self.build / "bin" / "selibs"
        plugins = subprocess.run(["pkg-config", "--variable=plugindir", "libspa-0.2"], check=True, capture_output=True,
                                 text=True).stdout.strip()
        self.environment = {
            **os.environ, "XDG_RUNTIME_DIR": str(folder), "XDG_STATE_HOME": str(folder), "XDG_CONFIG_HOME": str(folder),
            "SPA_PLUGIN_DIR": f"{self.build}/lib/spa-0.2:{plugins}", "LC_ALL": "C"}
        self.daemon = self.start_pipewire("main", MAIN % {"clock": clock})
        until(lambda: (self.folder / "pipewire-0").exists(), "the daemon's socket")
        self.start("wireplumber")
        until(lambda: {MICROPHONES, LOUDSPEAKER} <= self.nodes().keys(), "the null sinks")

    # --- programs

    def start(self, *command, log=None, **variables):
        """A program that ends with the desk. What it writes goes into the file `log`."""
        output = open(self.folder / (log or f"{command[0]}.log"), "ab")
        process = subprocess.Popen(["timeout", "-k", "5", str(LONGEST), *command], stdout=output, stderr=output,
                                   env={**self.environment, **variables}, cwd=self.folder)
        output.close()
        self.callback(self.stop, process)
        return process

    @staticmethod
    def stop(process, number=signal.SIGTERM):
        if process.poll() is None:
            process.send_signal(number)
            process.wait(timeout=PATIENCE)

    def start_pipewire(self, name, text, **variables):
        path = self.folder / f"{name}.conf"
        path.write_text(text)
        return self.start("pipewire", "-c", str(path), log=f"{name}.log", **variables)

    def start_canceller(self, text, **variables):
        """Until its microphone is there, or it has ended."""
        canceller = self.start_pipewire("canceller", text, **variables)
        until(lambda: canceller.poll() is not None or CANCELLED in self.nodes(), "the canceller")
        return canceller

    def log(self, name):
        return (self.folder / f"{name}.log").read_text(errors="replace")

    def run(self, *command):
        return subprocess.run(["timeout", "-k", "5", str(LONGEST), *command], env=self.environment, cwd=self.folder,
                              check=True, capture_output=True, text=True).stdout

    # --- what the daemon knows

    def objects(self):
        try:
            return json.loads(self.run("pw-dump"))
        except (subprocess.CalledProcessError, json.JSONDecodeError):
            return []  # it changes while it is written

    def nodes(self):
        """Nodes by name."""
        found = {}
        for one in self.objects():
            if one["type"] == "PipeWire:Interface:Node" and one.get("info"):
                found[one["info"]["props"].get("node.name")] = one
        return found

    def linked(self, output, into):
        nodes = self.nodes()
        if output not in nodes or into not in nodes:
            return False
        ends = (nodes[output]["id"], nodes[into]["id"])
        return any(one["type"] == "PipeWire:Interface:Link" and one.get("info") and
                   (one["info"]["output-node-id"], one["info"]["input-node-id"]) == ends for one in self.objects())

    def parameters(self, node="se_echo_cancel_capture"):
        """The parameters of the canceller, those of PipeWire itself among them."""
        flat = {}
        info = self.nodes().get(node, {"info": {"params": {}}})["info"]
        for props in info["params"].get("Props", []):
            values = props.get("params", [])
            flat.update(zip(values[::2], values[1::2]))
        return flat

    def set_parameter(self, name, value, node="se_echo_cancel_capture"):
        self.run("pw-cli", "set-param", str(self.nodes()[node]["id"]), "Props", f'{{ params = [ "{name}" {value} ] }}')

    def refresh(self):
        """Values are read when one is set."""
        self.set_parameter("se.advice", '""')

    def is_alive(self):
        return self.daemon.poll() is None and MICROPHONES in self.nodes()

    # --- sound

    def record(self, target, result, properties=""):
        """Begins to record one channel; result: the program, once it is linked."""
        name = f"recorder-of-{target}"
        recorder = self.start("pw-record", "--target", target, "--rate", "16000", "--channels", "1", "--format", "s16", "-P",
                              f"{{ node.name = {name} {properties} }}", str(result))
        until(lambda: self.linked(target, name), f"a recorder of {target}")
        until(lambda: self.linked(MICROPHONES, "se_echo_cancel_capture"), "the microphones")
        return recorder

    def record_while_playing(self, recording, result):
        """Plays into the microphones what they hear, and records what the canceller makes of it."""
        recorder = self.record(CANCELLED, result)
        self.run(*self.player(recording))
        self.stop(recorder, signal.SIGINT)

    @staticmethod
    def player(recording):
        """The command that plays eight channels into the microphones."""
        return ("pw-play", "--target", MICROPHONES, "--channel-map", ",".join(f"AUX{i}" for i in range(8)), "-P",
                "{ channelmix.disable = true }", str(recording))
