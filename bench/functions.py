"""The benchmarks of single functions, with Google Benchmark. Their names are "what|by whom"."""
import collections
import json
import subprocess


def measure(program, runs):
    """Seconds by what is measured and by whom, three values for each run; and bytes processed by what is measured."""
    command = [program, f"--benchmark_repetitions={3 * runs if runs > 1 else 1}",
               "--benchmark_enable_random_interleaving=true",
               f"--benchmark_min_time={0.05 if runs > 1 else 0}", "--benchmark_format=json"]
    output = subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout
    seconds = collections.defaultdict(lambda: collections.defaultdict(list))
    sizes = {}
    for run in sorted(json.loads(output)["benchmarks"], key=lambda run: run["family_index"]):
        if run["run_type"] != "iteration":
            continue
        # Wall time if a child process does the work; else CPU time, which background load does not distort.
        real = run["run_name"].endswith("/real_time")
        what, who = run["run_name"].removesuffix("/real_time").split("|")
        seconds[what][who].append(run["real_time" if real else "cpu_time"] / 1e9)
        if "bytes_per_second" in run:
            sizes[what] = run["bytes_per_second"] * run["cpu_time"] / 1e9
    return seconds, sizes
