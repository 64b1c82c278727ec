#!/usr/bin/env python3
"""Files that are broken, forbidden, full or in the way. Usage: tool_files.py RASTERLOOM PICTURE.bmp"""
import json
import os
import pathlib
import signal
import subprocess
import time

from tool_support import PICTURE, TOOL, ToolCase, main, tool


class FilesTest(ToolCase):
    def setUp(self):
        super().setUp()
        self.photo = self.path / "photo.bmp"
        self.photo.write_bytes(pathlib.Path(PICTURE).read_bytes())

    def refuse(self, *arguments, text="", **options):
        """The tool must fail with one line that holds `text`, and leave nothing that was not there."""
        before = self.listing()
        result = tool(*arguments, **options)
        self.assertEqual((result.returncode, result.stderr.count("\n")), (1, 1), (arguments, result.stderr))
        self.assertIn(text, result.stderr)
        self.assertEqual(self.listing(), before, arguments)

    def listing(self):
        return {path: path.stat().st_mtime_ns for path in self.path.rglob("*") if path.is_file()}

    def test_inputs_that_are_no_pictures(self):
        folder, empty, text, pipe = (self.path / name for name in ("folder", "empty.jpg", "text.png", "pipe"))
        folder.mkdir()
        empty.write_bytes(b"")
        text.write_text("This is not a picture.\n" * 100)
        os.mkfifo(pipe)
        self.refuse("convert", folder, self.path / "out.png", text="folder")
        for file in (empty, text, self.path / "none.png"):
            self.refuse("convert", file, self.path / "out.png", text=file.name)
            self.refuse("thumbnail", file, self.path / "out.png", "--size", "9x9", text=file.name)
            self.refuse("info", file, text=file.name)
        self.refuse("convert", "-", self.path / "out.png", text="-: ", input="")
        if os.geteuid() != 0:
            self.photo.chmod(0)
            self.refuse("convert", self.photo, self.path / "out.png", text="photo.bmp")

    def test_truncated_at_any_place(self):
        small = self.path / "small"
        for extension in ("jpg", "png", "bmp"):
            whole = small.with_suffix("." + extension)
            self.succeed("convert", self.photo, whole, "--resize", "40x")
            data = whole.read_bytes()
            cut = self.path / "cut"
            for length in range(0, len(data) - 12, max(1, len(data) // 25)):
                cut.write_bytes(data[:length])
                self.refuse("convert", cut, self.path / "out.png", text="cut: ")

    def test_outputs_in_the_way(self):
        folder = self.path / "folder"
        folder.mkdir()
        self.assertIn("is a folder", tool("convert", self.photo, folder).stderr)
        self.assertEqual(tool("convert", self.photo, folder).returncode, 2)
        (self.path / "there.png").mkdir()
        self.assertEqual(tool("convert", self.photo, self.path / "{}.png", "--force").returncode, 0)
        self.refuse("convert", self.photo, self.path / "photo.png", text="--force replaces it")
        self.refuse("convert", self.photo, self.path / "none" / "out.png", text="out.png")
        self.refuse("convert", self.photo, self.path / "out", text="out: ")
        (self.path / "readonly").mkdir(mode=0o500)
        if os.geteuid() != 0:
            self.refuse("convert", self.photo, self.path / "readonly" / "out.png", text="out.png")
        # A folder of the name of the result.
        (self.path / "in").mkdir()
        (self.path / "in" / "there.bmp").write_bytes(self.photo.read_bytes())
        self.refuse("convert", self.path / "in" / "there.bmp", self.path / "{}.png", "--force", text="there.png")

    def test_full_disks(self):
        self.refuse("convert", self.photo, "/dev/full", text="/dev/full")
        for arguments in (("info", self.photo), ("formats",), ("info", "--json", self.photo),
                          ("convert", self.photo, "-", "--to", "png")):
            with open("/dev/full", "w", encoding="ascii") as full:
                result = subprocess.run([TOOL, *map(str, arguments)], stdout=full, stderr=subprocess.PIPE, text=True,
                                        check=False)
            self.assertEqual(result.returncode, 1, arguments)
            self.assertIn("takes no more", result.stderr)
        # A limit on the size of files stops in the middle of writing, as a full disk does.
        limited = ["bash", "-c", "ulimit -f 40; trap '' XFSZ; exec \"$@\"", "bash", TOOL, "convert", self.photo,
                   self.path / "big.bmp", "--force"]
        for old in (None, b"old"):
            if old:
                (self.path / "big.bmp").write_bytes(old)
            result = subprocess.run(list(map(str, limited)), capture_output=True, text=True, check=False)
            self.assertEqual((result.returncode, result.stderr.count("\n")), (1, 1), result.stderr)
            self.assertEqual(sorted(os.listdir(self.path)), ["big.bmp", "photo.bmp"] if old else ["photo.bmp"])
        self.assertEqual((self.path / "big.bmp").read_bytes(), b"old")

    def test_output_over_input(self):
        self.assertEqual(tool("convert", self.photo, self.photo).returncode, 1)
        self.succeed("convert", self.photo, self.photo, "--force", "--resize", "50%")
        self.assertIn("360 x 240", self.succeed("info", self.photo))
        link = self.path / "link.bmp"
        link.symlink_to(self.photo)
        self.succeed("convert", link, link, "--force", "--resize", "50%")
        self.assertTrue(link.is_symlink())
        self.assertIn("180 x 120", self.succeed("info", self.photo))
        self.photo.write_bytes(self.photo.read_bytes()[:9000])
        self.refuse("convert", self.photo, self.photo, "--force", text="photo.bmp")

    def test_many_files_one_line_for_each_failure(self):
        inputs = []
        for number in range(12):
            inputs.append(self.path / f"n{number}.bmp")
            inputs[-1].write_bytes(self.photo.read_bytes()[:200 if number % 4 == 0 else None])
        out = self.path / "out"
        out.mkdir()
        for jobs in (1, 3, 0):
            result = tool("convert", "-f", *inputs, out / "{}.jpg", "--jobs", jobs, "--resize", "20x")
            self.assertEqual((result.returncode, result.stderr.count("\n")), (1, 3), result.stderr)
            self.assertEqual(len(os.listdir(out)), 9)
            self.assertEqual(result.stdout.count("saved"), 9)
        result = tool("info", "--json", *inputs, self.path / "none.bmp")
        self.assertEqual((result.returncode, len(json.loads(result.stdout))), (1, 12))

    def test_names_with_line_ends_stay_on_one_line(self):
        self.refuse("convert", self.path / "two\nlines.bmp", self.path / "out.png", text="two?lines.bmp")

    def test_an_interrupt_leaves_nothing(self):
        for delay in (0, 0.02, 0.1, 0.3):
            for chosen in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
                arguments = [TOOL, "convert", self.photo, self.path / "out.png", "--resize", "5000x",
                             "--compression-level", "9"]
                heed = lambda: signal.signal(signal.SIGHUP, signal.SIG_DFL)  # which whoever runs this may ignore
                with subprocess.Popen(list(map(str, arguments)), stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                      text=True, preexec_fn=heed) as process:
                    process.stdout.readline()
                    time.sleep(delay)
                    process.send_signal(chosen)
                    _, errors = process.communicate(timeout=120)
                self.assertEqual(process.returncode, 1)
                self.assertIn("interrupted", errors)
                self.assertEqual(os.listdir(self.path), ["photo.bmp"])

    def test_an_interrupted_wait_for_input(self):
        with subprocess.Popen([TOOL, "convert", "-", str(self.path / "out.png")], stdin=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True) as process:
            time.sleep(0.5)
            process.send_signal(signal.SIGINT)
            self.assertIn("interrupted", process.stderr.read())
            self.assertEqual(process.wait(60), 1)

    def test_a_reader_that_goes_away_harms_no_files(self):
        out = self.path / "out.png"
        with subprocess.Popen([TOOL, "convert", str(self.photo), str(out)], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE) as process:
            process.stdout.close()
            process.wait(60)
        self.assertIn("720 x 480", self.succeed("info", out))


if __name__ == "__main__":
    main()
