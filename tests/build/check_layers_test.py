"""What check_layers.py finds, on small folders made for it. Arguments: the compiler and nm."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECK = pathlib.Path(__file__).with_name("check_layers.py")
CXX, NM = sys.argv[1:3]

TABLE = """| layer of `src/ug` | sources |
|---|---|
| low | `one`, `two` |
| high | `three` |

| `four` | is no part of the table |
"""

GOOD = {
    "one.h": "int one();",
    "one.cpp": '#include "ug/one.h"\nint one() { return 1; }',
    "two.h": "inline int two() { return 2; }",
    "three.cpp": '#include "ug/one.h"\n#include "ug/two.h"\nint three() { return one() + two(); }',
}


class LayersTest(unittest.TestCase):
    def check(self, changes, table=TABLE, compiled=None):
        """The check's exit code and output for the good folder with some files changed."""
        with tempfile.TemporaryDirectory() as root:
            folder = pathlib.Path(root, "ug")
            folder.mkdir()
            document = pathlib.Path(root, "layers.md")
            document.write_text(table)
            objects = []
            for name, text in {**GOOD, **changes}.items():
                folder.joinpath(name).write_text(text + "\n")
            for source in sorted(folder.glob("*.cpp")):
                if compiled is None or source.name in compiled:
                    objects.append(f"{folder / source.name}.o")
                    subprocess.run([CXX, "-I", root, "-c", source, "-o", objects[-1]], check=True)
            done = subprocess.run(
                [sys.executable, "-B", CHECK, document, folder, NM, *objects], capture_output=True, text=True
            )
            return done.returncode, done.stderr

    def expect_fault(self, words, *arguments, **more):
        code, output = self.check(*arguments, **more)
        self.assertEqual(code, 1, output)
        self.assertIn(words, output)
        self.assertEqual(len(output.splitlines()), 1, output)

    def test_layers_that_hold_pass(self):
        self.assertEqual(self.check({}), (0, ""))

    def test_an_include_of_a_higher_layer(self):
        self.expect_fault(
            'two.h includes "ug/three.h": low must not use high',
            {"two.h": '#include "ug/three.h"\ninline int two() { return 2; }', "three.h": "", "three.cpp": ""},
        )

    def test_a_call_of_a_higher_layer_without_an_include(self):
        self.expect_fault(
            "low must not use high",
            {"one.cpp": "int three();\nint one() { return three(); }", "three.cpp": "int three() { return 3; }"},
        )

    def test_the_address_of_a_higher_layers_function(self):
        self.expect_fault(
            "low must not use high",
            {"one.cpp": "int three();\nauto *one() { return &three; }", "three.cpp": "int three() { return 3; }"},
        )

    def test_a_variable_of_a_higher_layer(self):
        self.expect_fault(
            "one uses flag of three: low must not use high",
            {"one.cpp": "extern bool flag;\nbool one() { return flag; }", "three.cpp": "bool flag;"},
        )

    def test_a_circle_of_includes(self):
        self.expect_fault(
            "circle one -> two -> one",
            {
                "one.h": '#pragma once\n#include "ug/two.h"\nint one();',
                "two.h": '#pragma once\n#include "ug/one.h"\ninline int two() { return 2; }',
            },
        )

    def test_a_circle_of_calls(self):
        self.expect_fault(
            "circle one -> two -> one",
            {
                "one.cpp": "int two();\nint one() { return two(); }",
                "two.h": "int two();",
                "two.cpp": "int one();\nint two() { return one(); }",
                "three.cpp": "",
            },
        )

    def test_a_circle_of_a_call_and_an_include(self):
        self.expect_fault(
            "circle one -> two -> one",
            {
                "one.cpp": "int two();\nint one() { return two(); }",
                "two.h": '#include "ug/one.h"\nint two();',
                "two.cpp": '#include "ug/two.h"\nint two() { return 2; }',
                "three.cpp": "",
            },
        )

    def test_a_source_in_no_layer(self):
        self.expect_fault("four is in no layer", {"four.cpp": ""})

    def test_a_layer_with_a_source_that_is_gone(self):
        self.expect_fault("names gone, which is not in", {}, table=TABLE.replace("`two`", "`two`, `gone`"))

    def test_a_source_in_two_layers(self):
        self.expect_fault("puts one into two layers", {}, table=TABLE.replace("`three`", "`three`, `one`"))

    def test_a_document_without_layers(self):
        self.expect_fault("has no table of the layers", {}, table="")

    def test_a_source_that_was_not_compiled(self):
        self.expect_fault("three.cpp has no object", {}, compiled=["one.cpp"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
