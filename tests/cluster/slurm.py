#!/usr/bin/env python3
"""A real Slurm of four nodes on this machine, all of it in one directory, for as long as it is needed.

    tests/cluster/slurm.py DIRECTORY COMMAND [WORD...]

starts it, runs the command with it, stops it, and ends with the command's exit code. Needs root and Debian's packages slurm-wlm
and munge. Nothing of the machine's own Slurm is touched: keys, sockets, states and logs lie in the directory, and every
process that was started is ended by its number. Should this program be killed, a guard that it has started ends them.
"""

import os
import pathlib
import secrets
import signal
import socket
import subprocess
import sys
import time

NODES = ["n1", "n2", "n3", "n4"]
PATIENCE = 60
CONFIGURATION = """ClusterName=tarvendo
SlurmctldHost={host}(127.0.0.1)
SlurmctldPort={control_port}
SlurmUser=root
SlurmdUser=root
AuthType=auth/munge
AuthInfo=socket={directory}/munge.socket
CredType=cred/munge
StateSaveLocation={directory}/state
SlurmctldPidFile={directory}/slurmctld.pid
SlurmdPidFile={directory}/slurmd-%n.pid
SlurmdSpoolDir={directory}/spool-%n
SlurmctldLogFile={directory}/slurmctld.log
SlurmdLogFile={directory}/slurmd-%n.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SlurmdParameters=config_overrides
ReturnToService=2
MpiDefault=none
SwitchType=switch/none
JobAcctGatherType=jobacct_gather/none
SlurmctldTimeout=10
SlurmdTimeout=15
KillWait=2
MinJobAge={min_job_age}
SchedulerParameters=batch_sched_delay=0
NodeName=n[1-4] NodeHostname={host} NodeAddr=127.0.0.1 Port=[{node_ports}] CPUs=2
PartitionName=main Nodes=ALL Default=YES MaxTime=INFINITE State=UP
"""


def free_ports(count):
    """Numbers of ports one behind the other that nobody listens on."""
    for first in range(17000 + os.getpid() % 1000 * 10, 60000, 10):
        sockets = []
        try:
            for port in range(first, first + count):
                sockets.append(socket.socket())
                sockets[-1].bind(("127.0.0.1", port))
            return first
        except OSError:
            continue
        finally:
            for opened in sockets:
                opened.close()
    raise RuntimeError("no free ports")


def await_true(done, what, seconds=PATIENCE):
    """Waits until done() holds."""
    end = time.monotonic() + seconds
    while not done():
        if time.monotonic() > end:
            raise TimeoutError(f"waited for {seconds} seconds: {what}")
        time.sleep(0.05)


def processes_of(directory):
    """The numbers of all processes that were started for the Slurm in that directory, with their environments: all know
    its configuration."""
    mark = f"\0SLURM_CONF={directory}/slurm.conf\0".encode()
    found = {}
    for process in pathlib.Path("/proc").iterdir():
        if not process.name.isdigit() or int(process.name) == os.getpid():
            continue
        try:
            environment = b"\0" + (process / "environ").read_bytes()
        except OSError:
            continue
        if mark in environment:
            found[int(process.name)] = environment
    return found


def kill_all(processes):
    for process in processes:
        try:
            os.kill(process, signal.SIGKILL)
        except ProcessLookupError:
            pass


def guard(directory):
    """Waits for the end of whoever has started this, however it comes, and ends what it has left."""
    sys.stdin.buffer.read()
    # What is being killed may still have started something.
    end = time.monotonic() + 30
    while (left := processes_of(directory)) and time.monotonic() < end:
        kill_all(left)
        time.sleep(0.1)


class Slurm:
    """It runs inside a `with`."""

    def __init__(self, directory, min_job_age=300):
        self.directory = pathlib.Path(directory).resolve()
        self.min_job_age = min_job_age
        self.processes = {}
        self.guard = None
        self.environment = dict(os.environ, SLURM_CONF=str(self.directory / "slurm.conf"))
        for name in list(self.environment):
            if name.startswith(("SBATCH_", "SQUEUE_")):
                del self.environment[name]

    def __enter__(self):
        self.directory.mkdir(parents=True, exist_ok=True)
        self.directory.chmod(0o755)
        # It sees the end of this process by the end of its own input, which nobody else holds.
        self.guard = subprocess.Popen([sys.executable, __file__, "--guard", str(self.directory)], stdin=subprocess.PIPE,
                                      start_new_session=True)
        try:
            self._configure()
            self._start("munged", ["munged", "--foreground", "--force", f"--key-file={self.directory}/munge.key",
                                   f"--socket={self.directory}/munge.socket", f"--pid-file={self.directory}/munged.pid",
                                   f"--log-file={self.directory}/munged.log", f"--seed-file={self.directory}/munge.seed"])
            await_true((self.directory / "munge.socket").exists, "munged", 20)
            self.start_controller()
            for node in NODES:
                self.start_node(node)
            await_true(lambda: self.idle_nodes() == len(NODES), "all nodes are idle")
        except BaseException:
            self._tell_logs()
            self.stop()
            raise
        return self

    def __exit__(self, *what):
        self.stop()

    def _configure(self):
        key = self.directory / "munge.key"
        key.write_bytes(secrets.token_bytes(1024))
        key.chmod(0o400)
        (self.directory / "state").mkdir(exist_ok=True)
        for node in NODES:
            (self.directory / f"spool-{node}").mkdir(exist_ok=True)
        first = free_ports(len(NODES) + 1)
        (self.directory / "slurm.conf").write_text(CONFIGURATION.format(
            directory=self.directory, host=socket.gethostname().split(".")[0], control_port=first,
            node_ports=f"{first + 1}-{first + len(NODES)}", min_job_age=self.min_job_age))

    def _start(self, name, words):
        with open(self.directory / f"{name}.out", "ab") as output:
            self.processes[name] = subprocess.Popen(
                words, env=self.environment, stdin=subprocess.DEVNULL, stdout=output, stderr=output,
                cwd=self.directory, start_new_session=True)

    def start_controller(self):
        self._start("slurmctld", ["slurmctld", "-D", "-f", f"{self.directory}/slurm.conf"])
        await_true(lambda: self.ask("scontrol", "ping").returncode == 0, "slurmctld")

    def start_node(self, node, through=()):
        """`through`: words that stand before slurmd's own."""
        self._start(node, [*through, "slurmd", "-D", "-N", node, "-f", f"{self.directory}/slurm.conf"])

    def kill(self, name, number=signal.SIGKILL):
        """Ends slurmctld or the slurmd of a node, and nothing that it has started."""
        process = self.processes.pop(name)
        process.send_signal(number)
        process.wait()

    def ask(self, *words):
        return subprocess.run(words, env=self.environment, capture_output=True, text=True, check=False,
                              stdin=subprocess.DEVNULL)

    def idle_nodes(self):
        return len(self.ask("sinfo", "-h", "-N", "-t", "idle").stdout.splitlines())

    def jobs(self, states="all"):
        """(number, state, name) of each job."""
        told = self.ask("squeue", "-h", f"--states={states}", "-o", "%i %T %j").stdout
        return [tuple(line.split(" ", 2)) for line in told.splitlines()]

    def _tell_logs(self):
        for log in sorted(self.directory.glob("*.log")) + sorted(self.directory.glob("*.out")):
            print(f"--- {log.name}", *log.read_text(errors="replace").splitlines()[-5:], sep="\n", file=sys.stderr)

    def stop(self):
        """Ends all jobs, then all that was started here."""
        if "slurmctld" in self.processes:
            numbers = [job[0] for job in self.jobs("PENDING,RUNNING,SUSPENDED")]
            if numbers:
                self.ask("scancel", *numbers)
            try:
                await_true(lambda: not self.step_processes(), "jobs end", 20)
            except TimeoutError:
                pass
        kill_all(self.step_processes())
        for name in [*NODES, "slurmctld", "munged"]:
            process = self.processes.pop(name, None)
            if process is None:
                continue
            process.terminate()
            try:
                process.wait(20)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()

        if self.guard:
            self.guard.stdin.close()
            self.guard.wait()

    def step_processes(self):
        """The numbers of the processes that this Slurm's jobs run in."""
        return [process for process, environment in processes_of(self.directory).items()
                if b"\0SLURM_JOB_ID=" in environment]


def main(words):
    if words[0] == "--guard":
        guard(words[1])
        return 0
    with Slurm(words[0]) as slurm:
        return subprocess.run(words[1:], env=slurm.environment, check=False).returncode


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
