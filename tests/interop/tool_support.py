"""What the tests of the command-line program share: the program, a scratch folder, and independent programs."""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

TOOL, PICTURE = sys.argv[1], sys.argv[2]


def tool(*arguments, **options):
    return subprocess.run([TOOL, *map(str, arguments)], capture_output=True, text=True, check=False, **options)


def run(*command, data=None):
    """The output of a program that must succeed."""
    return subprocess.run([str(part) for part in command], input=data, check=True, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE).stdout


class ToolCase(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.path = pathlib.Path(self.folder.name)

    def tearDown(self):
        self.folder.cleanup()

    def succeed(self, *arguments, **options):
        """The output of the tool, which must succeed and say nothing on standard error."""
        result = tool(*arguments, **options)
        self.assertEqual((result.returncode, result.stderr), (0, ""), arguments)
        return result.stdout

    def note(self, *arguments):
        """What the tool, which must succeed, says on standard error."""
        result = tool(*arguments)
        self.assertEqual(result.returncode, 0, result.stderr)
        return result.stderr


def main(*programs):
    """Runs the tests of the caller. 77 when a program that they need is not installed."""
    if not all(shutil.which(program) for program in programs):
        sys.exit(77)
    unittest.main("__main__", argv=[sys.argv[0]], verbosity=2)
