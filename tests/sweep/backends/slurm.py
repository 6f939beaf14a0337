"""A Slurm cluster of this machine alone: munged, slurmctld and slurmd with a configuration, sockets and ports of their own.
Everything stands in one folder and ends with it. Needs root.
"""
import contextlib
import os
import pathlib
import secrets
import signal
import socket
import subprocess
import time

PATIENCE = 60  # seconds for anything that is waited for

CONFIGURATION = """
ClusterName=test
SlurmctldHost={host}(127.0.0.1)
SlurmctldPort={controller_port}
SlurmdPort={node_port}
SlurmUser=root
AuthType=auth/munge
AuthInfo=socket={folder}/munge.socket
CredType=cred/munge
StateSaveLocation={folder}/state
SlurmdSpoolDir={folder}/spool
SlurmctldPidFile={folder}/slurmctld.pid
SlurmdPidFile={folder}/slurmd.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SwitchType=switch/none
MpiDefault=none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SchedulerParameters=sched_min_interval=0
MaxArraySize={array_size}
KillWait=2
ReturnToService=2
NodeName={host} NodeAddr=127.0.0.1 CPUs={processors} State=UNKNOWN
PartitionName=main Nodes=ALL Default=YES State=UP
"""


def wait_until(what, holds, alive=lambda: True):
    end = time.monotonic() + PATIENCE
    while not holds():
        if not alive():
            raise RuntimeError(f"a daemon has ended before this: {what}")
        if time.monotonic() > end:
            raise TimeoutError(f"waited {PATIENCE} s for this: {what}")
        time.sleep(0.05)


def free_port():
    with socket.socket() as one:
        one.bind(("127.0.0.1", 0))
        return one.getsockname()[1]


class Cluster:
    def __init__(self, folder, array_size):
        self.folder = pathlib.Path(folder)
        for name in ("state", "spool"):
            (self.folder / name).mkdir()
        self.environment = dict(os.environ, SLURM_CONF=str(self.folder / "slurm.conf"))
        (self.folder / "slurm.conf").write_text(CONFIGURATION.format(
            folder=self.folder, host=socket.gethostname(), controller_port=free_port(), node_port=free_port(),
            array_size=array_size, processors=len(os.sched_getaffinity(0))))
        key = self.folder / "munge.key"
        key.write_bytes(secrets.token_bytes(128))
        key.chmod(0o400)
        self.daemons = []

    def start(self, *words):
        log = open(self.folder / f"{pathlib.Path(words[0]).name}.log", "w")
        # A process group for each, so that none gets this terminal's signals before its turn.
        daemon = subprocess.Popen(words, stdin=subprocess.DEVNULL, stdout=log, stderr=log, env=self.environment,
                                  start_new_session=True)
        log.close()
        self.daemons.append(daemon)

    def all_alive(self):
        return all(daemon.poll() is None for daemon in self.daemons)

    def wait_until(self, what, holds):
        wait_until(what, holds, self.all_alive)

    def run(self, *words):
        return subprocess.run(words, env=self.environment, text=True, capture_output=True, check=False)

    def __enter__(self):
        try:
            munge = f"{self.folder}/munge"
            self.start("/usr/sbin/munged", "--foreground", "--force", f"--socket={munge}.socket", f"--key-file={munge}.key",
                       f"--pid-file={munge}.pid", f"--seed-file={munge}.seed", f"--log-file={munge}.log")
            self.wait_until("munged listens", (self.folder / "munge.socket").exists)
            self.start("/usr/sbin/slurmctld", "-D")
            self.start("/usr/sbin/slurmd", "-D", "-N", socket.gethostname())
            self.wait_until("the node is idle",
                            lambda: self.run("sinfo", "--noheader", "--format=%t").stdout.split() == ["idle"])
        except BaseException:
            self.end()
            raise
        return self

    def __exit__(self, *_):
        self.end()

    def end(self):
        """Job steps end with the node's daemon only when they are cancelled."""
        if self.daemons and self.all_alive():
            self.run("scancel", "--user=root")
            with contextlib.suppress(TimeoutError, RuntimeError):
                self.wait_until("no job is left", lambda: not self.run("squeue", "--noheader").stdout)
        for daemon in reversed(self.daemons):
            with contextlib.suppress(ProcessLookupError):
                daemon.terminate()
            try:
                daemon.wait(10)
            except subprocess.TimeoutExpired:
                os.killpg(daemon.pid, signal.SIGKILL)
                daemon.wait()
        self.daemons = []

    def logs(self):
        return "\n".join(f"== {log}\n{log.read_text(errors='replace')[-3000:]}" for log in self.folder.glob("*.log"))
