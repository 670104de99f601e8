#!/usr/bin/env python3
"""Puts the faults of faults.tsv into the program, one at a time, and tells which of them the tests miss.

    bench/Faults.py [--check] [ID...]     all of them, or those named

Works on a clone of the last commit in build/faults, so that this folder stays as it is. Takes about half a minute
for each fault. --check only tells whether the text of each fault occurs exactly once in the program.
"""
import os, re, subprocess, sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
CLONE = ROOT / 'build' / 'faults'
ROOMS = ['base', 'platform', 'files', 'config', 'sql', 'service', 'ui']
LONGEST_TEST = 300  # seconds


def read_faults():
    """The columns id, tests, description, old, new; in the last two \\n is a line end and \\\\ a backslash."""
    faults = []
    lines = (ROOT / 'bench' / 'faults.tsv').read_text().splitlines()
    for line in lines[1:]:
        name, tests, description, old, new = line.split('\t')
        unescape = lambda text: re.sub(r'\\(.)', lambda m: '\n' if m[1] == 'n' else m[1], text)
        faults.append((name, tests.split(), description, unescape(old), unescape(new)))
    return faults


def files_with(old):
    """The places where the text occurs. Blanks and line ends may differ."""
    pattern = re.compile(r'\s+'.join(re.escape(word) for word in old.split()))
    found = []
    for room in ROOMS:
        for path in (CLONE / room).rglob('*'):
            if path.suffix in ('.cpp', '.h'):
                found += [(path, match) for match in pattern.finditer(path.read_text())]
    return found


def run_test(name):
    """The first test that fails, or None when all pass."""
    program = next((CLONE / 'build' / 'dev').glob(f'**/{name}_test'))
    environment = dict(os.environ, LC_ALL='C.UTF-8', QT_QPA_PLATFORM='offscreen')
    try:
        run = subprocess.run([program, '--gtest_fail_fast'], cwd=program.parent, env=environment, text=True,
                             errors='replace', capture_output=True, timeout=LONGEST_TEST)
    except subprocess.TimeoutExpired:
        return f'{name}_test does not end'
    if run.returncode == 0:
        return None
    failed = re.search(r'^\[  FAILED  \] (\S+)', run.stdout, re.M)
    return failed[1] if failed else f'{name}_test ends with {run.returncode}'


def try_fault(tests, old, new):
    found = files_with(old)
    if len(found) != 1:
        return f'STALE: its text occurs {len(found)} times'
    path, match = found[0]
    before = path.read_text()
    path.write_text(before[:match.start()] + new + before[match.end():])
    try:
        targets = [f'{test}_test' for test in tests]
        build = subprocess.run(['cmake', '--build', 'build/dev', '--target', *targets], cwd=CLONE, capture_output=True)
        if build.returncode != 0:
            return 'STALE: it does not build'
        caught = next(filter(None, map(run_test, tests)), None)
        return f'caught by {caught}' if caught else 'MISSED'
    finally:
        path.write_text(before)


def main():
    chosen = [word for word in sys.argv[1:] if not word.startswith('-')]
    if not CLONE.exists():
        subprocess.run(['git', 'clone', '-q', ROOT, CLONE], check=True)
    subprocess.run(['git', '-C', CLONE, 'pull', '-q'], check=True)
    if '--check' not in sys.argv:
        subprocess.run([CLONE / 'scripts' / 'build', 'dev'], check=True, stdout=subprocess.DEVNULL)
    bad = 0
    for name, tests, description, old, new in read_faults():
        if chosen and name not in chosen:
            continue
        if '--check' in sys.argv:
            count = len(files_with(old))
            verdict = 'ok' if count == 1 else f'STALE: its text occurs {count} times'
        else:
            verdict = try_fault(tests, old, new)
        bad += verdict != 'ok' and not verdict.startswith('caught')
        print(f'{name}\t{verdict}\t{description}', flush=True)
    sys.exit(f'{bad} faults missed or stale' if bad else 0)


main()
