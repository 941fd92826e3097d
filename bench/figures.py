#!/usr/bin/env python3
"""Every figure of the benchmarks beside what it is measured against, as one table and one chart.

    figures.py BUILD-FOLDER WINDOWS-BUILD-FOLDER WORK-FOLDER [--write]

Prints the table and fails when a figure that is promised is missed. With --write the table and the chart of
docs/performance.md are made anew. What each program prints lies in WORK-FOLDER. Keep the machine quiet meanwhile.
"""
import contextlib
import dataclasses
import datetime
import os
import pathlib
import re
import subprocess
import sys
import time

from awake_processors import awake_processors
from chart import chart

ROOT = pathlib.Path(__file__).resolve().parent.parent
TABLE = ROOT / "docs/performance.md"
CHART = ROOT / "docs/pictures/performance.svg"
BEGIN, END = "<!-- figures: scripts/bench --write -->", "<!-- end of figures -->"


@dataclasses.dataclass
class Figure:
    what: str
    ours: str
    beside: str  # what it is measured against, with its own figure
    ratio: float  # ours to the other, in the unit of the promise
    most: float = None  # promised: at most
    least: float = None  # promised: at least

    def promise(self):
        if self.most is not None:
            return f"at most {self.most:g}"
        return f"at least {self.least:g}" if self.least is not None else ""

    def is_kept(self):
        return (self.most is None or self.ratio <= self.most) and (self.least is None or self.ratio >= self.least)


def said(work, name, *command, **more):
    """What a benchmark prints, kept in the work folder too."""
    run = subprocess.run([str(word) for word in command], capture_output=True, text=True, check=False, **more)
    (work / f"{name}.txt").write_text(run.stdout + run.stderr, encoding="utf-8")
    if run.returncode != 0:
        sys.exit(f"figures: {name} failed: {(run.stderr or run.stdout).strip()[-300:]}")
    return run.stdout


@contextlib.contextmanager
def sale_printer(build, connections):
    """A printer that accepts every sale; its port."""
    with subprocess.Popen([build / "sale_printer", str(connections)], stdout=subprocess.PIPE, text=True) as printer:
        try:
            yield printer.stdout.readline().strip()
        except BaseException:
            printer.kill()
            raise


def rows(pattern, text, count, what):
    """What was printed of each; a benchmark that has come to print something else must not pass unseen."""
    found = re.findall(pattern, text, re.MULTILINE)
    if len(found) != count:
        sys.exit(f"figures: {what} printed {len(found)} rows of figures where {count} are wanted")
    return found


MOST_OF_AN_EXCHANGE = {"Linux": 1.03, "DLL under Wine": 1.1}


def exchange(title, texts):
    """The least of several runs: whatever else the machine does makes a ratio worse, or the other side slower."""
    for log in ("off", "on"):
        row = rf"log {log} +itemSale +([\d.]+) us +bare loop +([\d.]+) us +ratio ([\d.]+)"
        runs = [[float(number) for number in rows(row, text, 1, "item_sale")[0]] for text in texts]
        ours, bare, ratio = min(runs, key=lambda run: run[2])
        yield Figure(f"Exchange, {title}, log {log}", f"{ours:.1f} µs", f"the same system calls: {bare:.1f} µs", ratio,
                     most=MOST_OF_AN_EXCHANGE[title])


def exchanges(build, windows, work):
    for title, program in (("Linux", [build / "item_sale"]), ("DLL under Wine", ["wine", windows / "item_sale.exe"])):
        texts = []
        for run in range(3):
            with sale_printer(build, 2) as port:
                texts.append(said(work, f"item_sale {title} {run}", *program, port, cwd=work))
        yield from exchange(title, texts)


def write_by_modbus(text):
    (ours, other, ratio), = rows(r"itemSale +([\d.]+) us +libmodbus +([\d.]+) us +ratio ([\d.]+)", text, 1, "modbus_write")
    yield Figure("Exchange, Linux, log off, in another run", f"{float(ours):.1f} µs",
                 f"a write of the same size by libmodbus: {float(other):.1f} µs", float(ratio), most=1.4)


def modbus(build, _, work):
    with sale_printer(build, 1) as port:
        yield from write_by_modbus(said(work, "modbus_write", build / "modbus_write", port))


def size_of(count):
    return f"{count >> 20} MB" if count >= 1 << 20 else f"{count >> 10} KB"


def journal(text):
    """A reply of some milliseconds says little of how fast a journal comes in: nothing is promised of it. Nor is it beside a
    loop that throws the bytes away, which shows what it costs to keep them."""
    row = r"^ *(\d+) +([\d.]+) +([\d.]+) +([\d.]+) +([\d.]+) +([\d.]+) +[\d.]+ +[\d.]+$"
    for size, ours, keeping, throwing, kept, thrown in rows(row, text, 4, "journal_throughput"):
        what, speed = f"Journal of {size_of(int(size))}", f"{1000 / float(ours):.1f} MB/s"
        yield Figure(what, speed, f"the same system calls, data kept: {1000 / float(keeping):.1f} MB/s", float(kept),
                     least=0.97 if int(size) >= 1 << 20 else None)
        yield Figure(what, speed, f"the same, data thrown away: {1000 / float(throwing):.1f} MB/s", float(thrown))
    row = r"(\d+) bytes with the call log (\w+): peak/reply ([\d.]+)"
    for size, log, ratio in rows(row, text, 2, "journal_throughput's memory"):
        yield Figure(f"Journal of {size_of(int(size))}, log {log}: most memory", f"{ratio} times the reply",
                     "a growing string: 2 times", float(ratio), most=2.1)


def journals(build, _, work):
    with awake_processors():
        text = said(work, "journal_throughput", build / "journal_throughput", cwd=work)
    yield from journal(text)


def pictures(text):
    row = r"^(.+?): ([\d.]+) billion dots/s, plain loop ([\d.]+), ratio ([\d.]+); .* takes 1/([\d.]+)"
    for size, ours, plain, ratio, copied in rows(row, text, 2, "logo_layouts"):
        yield Figure(f"Layouts of a picture of {size}", f"{ours} billion dots/s",
                     f"a loop over the dots: {plain} (memcpy of the result: {copied} times ours)", float(ratio),
                     least=20)


def layouts(build, _, work):
    yield from pictures(said(work, "logo_layouts", build / "logo_layouts", cwd=work))


def line_rate(text):
    row = r"^(bare loop|library) +[\d.]+ +[\d.]+ +([\d.]+) +([\d.]+)$"
    (_, bare, bare_core), (_, ours, core) = rows(row, text, 2, "serial_throughput")
    yield Figure("Serial reply at 115,200 baud", f"{ours} % of the line rate", f"a bare loop: {bare} %", float(ours), least=99)
    yield Figure("Serial reply at 115,200 baud, processor", f"{core} % of a core", f"a bare loop: {bare_core} %", float(core),
                 most=5)


def serial(build, _, work):
    with awake_processors():
        text = said(work, "serial_throughput", build / "serial_throughput")
    yield from line_rate(text)


def loading_time(title, text):
    ours, control, longer = (int(number) / 1000 for number in re.search(r"in (\d+) micro.* in (\d+): (-?\d+)", text).groups())
    return Figure(f"Loading {title}", f"{ours:.2f} ms", f"a library with the same imports and no code: {control:.2f} ms", longer,
                  most=1)


def loading(build, windows, work):
    test = ROOT / "tests/packages/loading_time_test.py"
    for title, library, compiler, program in (
            ("libtelvofm.so", build / "libtelvofm.so", "cc", [build / "loading_time"]),
            ("telvofm.dll under Wine", windows / "telvofm.dll", "x86_64-w64-mingw32-gcc",
             ["wine", windows / "loading_time.exe"])):
        yield loading_time(title, said(work, f"loading {library.suffix}", sys.executable, "-B", test, library, compiler, work,
                                       *program))


def instructions(build, _, work):
    text = said(work, "instructions", sys.executable, "-B", ROOT / "bench/instructions.py", build, "--beside")
    off, on = (int(number) for number in re.search(r"(\d+) instructions .* off, (\d+) with", text).groups())
    bare_off, bare_on = (int(number) for number in re.search(r"bare loop: (\d+) and (\d+)", text).groups())
    for log, ours, bare, most in (("off", off, bare_off, 3000), ("on", on, bare_on, None)):
        yield Figure(f"Instructions of an itemSale, log {log}", f"{ours:,}", f"the same system calls: {bare:,}", ours, most=most)
    for what, pattern in (("an itemSale on a serial line", r"serial line: (\d+)"), ("a journal of sixteen blocks", r"journal.*: (\d+)")):
        ours = int(re.search(pattern, text)[1])
        yield Figure(f"Instructions of {what}", f"{ours:,}", "", ours)


def synchronized_writes_a_second(folder):
    """What the disk allows a loop that writes 4 KB and has it synchronised, over two seconds."""
    path, count, page = folder / "synchronized", 0, bytes(4096)
    file = os.open(path, os.O_WRONLY | os.O_CREAT)
    begun = time.monotonic()
    while time.monotonic() - begun < 2:
        os.pwrite(file, page, count % 1000 * len(page))
        os.fdatasync(file)
        count += 1
    lasted = time.monotonic() - begun
    os.close(file)
    path.unlink()
    return count / lasted


@dataclasses.dataclass
class Load:
    """What one run of printer_load prints, beside the disk's writes a second."""
    not_accepted: int
    core: float
    commands: int
    receipts: int
    answers: int
    disk: float
    calls: list  # the median and the percentile of the control calls, for each way of selling


def load_of(text, disk):
    row = r"^%s +(\d+) commands/s +(\d+) receipts/s +([\d.]+) %% .*, (\d+) not accepted$"
    answered = re.search(r"^only answered +(\d+) commands/s", text, re.MULTILINE)
    if not answered:
        sys.exit("figures: printer_load does not say how many commands printers answer that do nothing else")
    runs = [rows(row % title, text, 2, "printer_load") for title in ("50 x 1 receipt/s", "as fast as it goes")]
    (_, _, core, _), (commands, receipts, _, _) = (both[0] for both in runs)  # not those beside a test
    calls = rows(r"control calls: median ([\d.]+) ms, 95th percentile ([\d.]+) ms", text, 2, "printer_load's control calls")
    return Load(sum(int(run[3]) for both in runs for run in both), float(core), int(commands), int(receipts),
                int(answered[1]), disk, [(float(median), float(percentile)) for median, percentile in calls])


def load(loads):
    """Of several runs the best of each side counts, as the two are not measured at once; but each accepts everything."""
    not_accepted = sum(one.not_accepted for one in loads)
    core = min(one.core for one in loads)
    yield Figure("50 virtual printers, requests not accepted", f"{not_accepted:,}", "", not_accepted, most=0)
    yield Figure("50 virtual printers, a receipt a second each", f"{core} % of a core", "", core, most=25)
    commands, receipts, answers, disk = (max(getattr(one, side) for one in loads)
                                         for side in ("commands", "receipts", "answers", "disk"))
    yield Figure("50 virtual printers, commands", f"{commands:,} a second",
                 f"printers that only answer: {answers:,} a second", commands / answers, least=0.06)
    yield Figure("50 virtual printers, synchronised receipts", f"{receipts:,} a second",
                 f"a loop that writes and synchronises: {disk:,.0f} a second", receipts / disk, least=0.1)
    for selling, ways, most in zip(("a receipt a second each", "as fast as it goes"), zip(*(one.calls for one in loads)),
                                   (5, None)):
        median, percentile = min(ways, key=lambda calls: calls[1])
        yield Figure(f"Control call, 50 printers sell {selling}", f"95 % within {percentile} ms", f"median: {median} ms",
                     percentile, most=most)


def trace(alone, over_tcp):
    """The figure of what trace_cost and command_cost.py print: the share of the trace and of faults that nobody has armed
    in the cheapest command, in processor time."""
    ours, whole = re.search(r"disarmed faults +(\d+) ns", alone), re.search(r"over TCP (\d+) ns", over_tcp)
    if not ours or not whole:
        sys.exit("figures: trace_cost or command_cost does not say what a command costs")
    ours, whole = float(ours[1]), float(whole[1])
    yield Figure("Trace and disarmed faults", f"{ours / 1000:.2f} µs", f"the cheapest command over TCP: {whole / 1000:.1f} µs",
                 100 * ours / whole, most=5)


def tracing(build, _, work):
    yield from trace(said(work, "trace_cost", build / "trace_cost"),
                     said(work, "command_cost", sys.executable, "-B", ROOT / "bench/command_cost.py",
                          build / "telvofm-printer"))


def virtual_printer(build, _, work):
    loads = []
    for run in range(3):
        folder = work / f"load{run}"
        folder.mkdir()
        text = said(work, f"printer_load {run}", build / "printer_load", build / "telvofm-printer", folder)
        loads.append(load_of(text, synchronized_writes_a_second(folder)))
    yield from load(loads)


def machine():
    """What was measured on, as far as the system tells."""
    processors = pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8")
    processor = re.search(r"model name\s*: (.*)", processors)
    virtual = ", a virtual machine" if re.search(r"^flags.*\bhypervisor\b", processors, re.MULTILINE) else ""
    system = re.search(r'PRETTY_NAME="(.*)"', pathlib.Path("/etc/os-release").read_text(encoding="utf-8"))
    wine = subprocess.run(["wine", "--version"], capture_output=True, text=True, check=False).stdout.split()
    return (f"{os.cpu_count()} processors ({processor[1] if processor else 'unnamed'}), {system[1]}, Linux "
            f"{os.uname().release}, {wine[0] if wine else 'no Wine'}{virtual}")


def ratio_of(figure):
    return f"{figure.ratio:,.0f}" if figure.ratio >= 100 else f"{figure.ratio:.2f}"


def missed_of(figures):
    return [figure.what for figure in figures if not figure.is_kept()]


def table(figures):
    lines = [f"Measured on {datetime.date.today()}: {machine()}.", "",
             "| what | ours | beside it | ratio or figure | promised |", "|---|---|---|---|---|"]
    lines += [f"| {f.what} | {f.ours} | {f.beside} | {ratio_of(f)} | {f.promise()}{'' if f.is_kept() else ', missed'} |"
              for f in figures]
    missed = missed_of(figures)
    lines += ["", f"Missed: {'; '.join(missed)}." if missed else "Nothing that is promised was missed."]
    return "\n".join(lines)


def write(figures):
    page = TABLE.read_text(encoding="utf-8")
    before, after = page.split(BEGIN)[0], page.split(END)[1]
    TABLE.write_text(f"{before}{BEGIN}\n{table(figures)}\n{END}{after}", encoding="utf-8")
    shown = [f for f in figures if f.what.startswith(("Exchange", "Journal")) and f.promise() and "memory" not in f.what]
    CHART.write_text(chart("Time of a call, in times of the same work without the library",
                           [(f"{f.what}, beside {f.beside.split(':')[0]}",
                             1 / f.ratio if f.least else f.ratio) for f in shown]), encoding="utf-8")


def complaint(figures):
    """What is missed, in one sentence; None when nothing is."""
    missed = missed_of(figures)
    return f"figures: missed: {'; '.join(missed)}; is the machine quiet?" if missed else None


def main():
    build, windows, work = (pathlib.Path(name).resolve() for name in sys.argv[1:4])
    work.mkdir(parents=True, exist_ok=True)
    figures = []
    for measure in (exchanges, modbus, journals, layouts, serial, loading, instructions, virtual_printer, tracing):
        for figure in measure(build, windows, work):
            missed = "" if figure.is_kept() else "   MISSED"
            print(f"{figure.what:48} {figure.ours:>22}   {figure.beside:64} {ratio_of(figure):>8} "
                  f"{figure.promise():>14}{missed}", flush=True)
            figures.append(figure)
    if "--write" in sys.argv:
        write(figures)
    sys.exit(complaint(figures))


if __name__ == "__main__":
    main()
