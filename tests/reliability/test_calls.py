"""A real process's system calls: which a save makes, and what becomes of it when they fail.

The tracer lets them fail, below every seam; a small file system in memory is really full.
"""

import concurrent.futures
import itertools
import os
import pathlib
import plistlib
import re
import subprocess
import tempfile
import types
import unittest

from service import ServedTest, answer
from support import BIN

SAVER = BIN / "reliability_saver"
# A process that is traced cannot look for its own leaks, should it be built to.
STRACE = ["/usr/bin/strace", "-E", "ASAN_OPTIONS=detect_leaks=0", "-f"]
CAN_TRACE = subprocess.run([*STRACE, "-o", "/dev/null", "/bin/true"], check=False).returncode == 0
# One of those that are all taken alike, unless FEXORA_CALLS asks for them.
ERRORS = ["EIO", "EINTR", "ENOSPC"]
if "FEXORA_CALLS" in os.environ:
    ERRORS += ["EACCES", "EMFILE", "ENFILE", "ENOMEM", "EDQUOT", "EROFS"]
OF_A_SAVE = ["fsync", "rename", "flock", "fchmod", "getdents64", "mkdir"]


class Calls(ServedTest):
    def setUp(self):
        super().setUp()
        self.service.script = answer('{"rates": [{"code": "EUR", "rate": 0.5}]}', 'ETag: "one"')

    def run_saver(self, *job, before=(), folder=None):
        """In a container of its own that has a store, unless `folder` is one; what came of it."""
        container = pathlib.Path(folder or tempfile.mkdtemp(dir=self.container))
        store = container / "Store.plist"
        if folder is None or container.exists():
            store.write_bytes(plistlib.dumps({"Fraction": 6}))
        # Nothing of all this may hang.
        done = subprocess.run(
            ["/usr/bin/timeout", "25", *before, SAVER, *job], capture_output=True, text=True,
            env=self.environment(FEXORA_CONTAINER=str(container),
                                 XDG_CACHE_HOME=f"{container}/cache"))
        return types.SimpleNamespace(
            code=done.returncode, out=done.stdout, err=done.stderr, path=str(store),
            content=plistlib.loads(store.read_bytes()), names=set(os.listdir(container)),
            is_doubted="may not survive" in done.stderr)

    @unittest.skipUnless(CAN_TRACE, "this system lets no process be traced: nothing is proven")
    def each(self, calls, whens, job, check, filter=()):
        """Runs the job while each call fails with each error, and lets `check` look at each run."""

        def run(case):
            call, error, when = case
            inject = f"inject={call}:error={error}:when={when}"
            return self.run_saver(*job, before=[*STRACE, "--seccomp-bpf", "-o", "/dev/null", "-e",
                                                f"trace={call}", "-e", inject, *filter])

        # All that waits for anything waits in this call.
        cases = [case for case in itertools.product(calls, ERRORS, whens)
                 if (case[0], case[2]) != ("poll", "1+")]
        with concurrent.futures.ThreadPoolExecutor(2 * os.cpu_count()) as pool:
            for case, result in zip(cases, pool.map(run, cases)):
                with self.subTest(case, said=result.out + result.err):
                    check(case, result)


class Save(Calls):
    def test_ends_in_success_or_in_a_kept_file(self):
        failures = []

        def check(case, run):
            is_saved = "SAVE SUCCESS" in run.err
            self.assertEqual((run.code, run.out), (0, "6\n7\n") if is_saved else (1, "6\n"))
            self.assertEqual(run.content["Fraction"], 7 if is_saved or run.is_doubted else 6)
            self.assertTrue(is_saved or run.path in run.err)
            # An interrupted call is made again, but for a flush: that is tried once, however it
            # fails.
            call, error, when = case
            self.assertTrue(is_saved or error != "EINTR" or when == "1+" or call == "fsync")
            self.assertFalse(is_saved and (call, when) == ("fsync", "1"))
            failures.extend([] if is_saved else [case])

        self.each(OF_A_SAVE, ["1", "1+", "2"], ["save", "1"], check)
        self.assertGreater(len(failures), 6 * len(ERRORS), "the tracer did what it was asked")

    def test_without_a_wake_up_or_a_watch_it_saves_and_says_so(self):
        def check(case, run):
            self.assertEqual((run.code, run.content["Fraction"]), (0, 7))
            # GLib has a wake-up of its own, by a pipe where there is no eventfd.
            if case[0] != "eventfd2":
                self.assertRegex(run.err, "cannot be watched|waiting for it")

        self.each(["inotify_init1", "inotify_add_watch", "eventfd2"], ["1+"], ["save", "1"], check)

    def test_a_watch_that_cannot_be_read_gives_way_to_another(self):
        def check(case, run):
            self.assertEqual(run.out, "7\n8\n")
            # An interrupted reading is made again, within bounds.
            _, error, when = case
            self.assertEqual("could not be watched: " in run.err, error != "EINTR" or when == "1+")

        self.each(["read"], ["1", "1+"], ["watch"], check, filter=["-P", "anon_inode:inotify"])

    def test_on_a_full_disk_the_old_file_stays(self):
        folder = self.container / "disk"
        folder.mkdir()
        mount = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k,mode=0700",
                                "fexora-test", folder],
                               stderr=subprocess.DEVNULL, check=False)
        if mount.returncode != 0:
            self.skipTest("this system allows no mount: nothing is proven")
        self.addCleanup(subprocess.run, ["umount", folder], check=True)
        run = self.run_saver("save", "1", folder=folder)
        self.assertEqual(run.code, 1)
        self.assertEqual(run.err, f"SAVE FAIL\nThe store {run.path} was not saved: write: "
                                  "No space left on device\n")
        self.assertEqual((run.content, run.names), ({"Fraction": 6}, {"Store.plist"}))


class Order(Calls):
    HARMLESS = {"newfstatat", "fstat", "lstat", "stat", "statx", "read", "flock", "getdents64",
                "fcntl", "inotify_add_watch", "access", "faccessat2", "lseek", "fchmod", "readlink",
                "close"}

    def changes(self, trace, folder):
        """What was done that could not be undone, in its order, as the call and its object."""
        for line in trace.read_text().splitlines():
            call = re.fullmatch(r"\d+ +(\w+)\((.*)\) += (-?\d+).*", line)
            if call is None or call[3] == "-1":
                continue
            name, arguments = call[1], call[2]
            # The folder above holds the folder's own name.
            objects = re.findall(rf"{folder.parent}(?:/[\w./-]+)?(?=[>\"])", arguments)
            objects = [re.sub(r"\.fexora-save-\w+", "temporary", os.path.relpath(path, folder))
                       for path in objects]
            if arguments.startswith("2<") and "SAVE" in arguments:
                yield "say", re.search("SAVE [A-Z]+", arguments)[0]
            elif name == "openat" and objects:
                self.assertNotIn("O_TRUNC", line)
                if "O_CREAT" in arguments:
                    self.assertIn("O_EXCL", arguments)
                    yield "create", objects[0]
                else:
                    self.assertIn("O_RDONLY", arguments)
            elif objects and name not in self.HARMLESS:
                yield name, *objects

    @unittest.skipUnless(CAN_TRACE, "this system lets no process be traced: nothing is proven")
    def test_each_save_makes_these_calls_and_no_others(self):
        above = self.container / "above"
        above.mkdir()
        trace = self.container / "trace"
        run = self.run_saver("save", "2", folder=above / "container", before=[
            *STRACE, "-y", "-o", trace, "-e", "trace=%file,%desc"])
        self.assertEqual((run.code, run.out, run.content["Fraction"]), (0, "0\n1\n2\n", 2))
        save = [("create", "temporary"), ("write", "temporary"), ("fsync", "temporary"),
                ("rename", "temporary", "Store.plist"), ("fsync", "."), ("say", "SAVE SUCCESS")]
        self.assertEqual(list(self.changes(trace, above / "container")),
                         [("mkdir", "."), ("fsync", ".."), *save, *save, *save])


class Refresh(Calls):
    """The rates come whole or not at all, and what the process says of them is so."""

    def setUp(self):
        super().setUp()
        self.saved = self.failed = 0

    def check(self, _, run):
        is_saved = (run.out, run.code) == ("rates 1\n", 0)
        is_told = run.out.startswith("error ") or "SAVE FAIL" in run.err
        self.assertNotEqual(is_saved, is_told, run.code)
        self.saved += is_saved
        self.failed += is_told
        self.assertEqual(run.content["Fraction"], 6)
        self.assertEqual("UDUSDRates" in run.content, is_saved or run.is_doubted)
        self.assertLessEqual(run.names, {"Store.plist", "cache"})

    def refresh_without(self, calls, fewest):
        self.each(calls, ["1", "1+"], ["refresh"], self.check)
        self.assertGreater(min(self.saved, self.failed), fewest, "the tracer did what it was asked")

    def test_a_request_ends_with_an_error(self):
        self.refresh_without(["clone3", "socket", "connect", "sendto", "recvfrom", "poll",
                              "getsockopt", "setsockopt", "getsockname", "getpeername", "fcntl",
                              "socketpair", "eventfd2"], 6 * len(ERRORS))

    def test_what_keeps_its_answer_leaves_it_or_says_so(self):
        self.refresh_without(OF_A_SAVE, 2 * len(ERRORS))


if __name__ == "__main__":
    unittest.main()
