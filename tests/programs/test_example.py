"""The example of how fresh rates come: examples/fresh-rates."""

import subprocess

from support import BIN, SOURCE, ProgramTest
from test_service import expected_rates


class Example(ProgramTest):
    def test_fresh_rates(self):
        result = subprocess.run([SOURCE / "examples/fresh-rates", BIN], env=self.environment(),
                                text=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.assertEqual((result.returncode, result.stderr), (0, ""), result.stdout)
        self.assertIn("339 rates from the service", result.stdout)
        rate = expected_rates()
        for code in ("USD", "GBP", "JPY", "CNY"):
            amount = f"{100 * rate[code] / rate['EUR']:,.3f}"
            self.assertRegex(result.stdout, rf"(?m)^ *{amount} {code} ")
        self.assertEqual(list(self.container.iterdir()), [])
