"""A host may end at any moment of a request, and modules may be missing."""

import shutil

from support import BIN, ProgramTest

HOST = "network_exiting"


class Exit(ProgramTest):
    def test_nothing_holds_it_up(self):
        # A leak checker that runs at exit does not see what threads held that a fork left behind.
        env = self.environment(LSAN_OPTIONS="detect_leaks=0")
        for when in ("at-once", "resolving", "connected", "secured", "receiving", "completed",
                     "forked"):
            hosts = [self.start(when, program=HOST, env=env) for _ in range(10)]
            for host in hosts:
                _, err = host.communicate(timeout=60)
                self.assertEqual(host.returncode, 0, (when, err))


class Modules(ProgramTest):
    def alone(self):
        """A folder with the library and no module; and an environment for programs to load that."""
        folder = self.new_folder()
        for library in (BIN.parent / "lib").glob("libfexora.so.*"):
            shutil.copy2(library, folder, follow_symlinks=False)
        return folder, self.environment(LD_LIBRARY_PATH=str(folder))

    def complete(self, env=None):
        return self.run_program("completed", program=HOST, env=env)

    def test_opened_by_the_first_request_or_an_error(self):
        self.assertEqual(self.complete()[1], "no address\n")
        folder, env = self.alone()
        _, out, err = self.complete(env)
        self.assertEqual(out, "", "nothing to complete a request with")
        self.assertIn("no loop module", err)
        loop, = (BIN.parent / "lib").rglob("fexora_loop.so")
        (folder / loop.parent.name).mkdir()
        shutil.copy(loop, folder / loop.parent.name)
        self.assertEqual(self.complete(env)[1], "no transport\n")
        self.assertEqual(self.run_program("at-once", program=HOST, env=env)[0], 0)

    def test_missing_for_a_store_is_no_damage(self):
        before = b"<plist version='1.0'><dict><key>other</key><string>x</string></dict></plist>"
        self.store.write_bytes(before)
        self.assertEqual(self.run_program("settings", "fraction", "5", env=self.alone()[1])[0], 4)
        self.assertEqual(self.store.read_bytes(), before)
        self.succeed("settings", "fraction", "5")
        self.assertEqual(self.content(), self.content() | {"other": "x", "Fraction": 5})
