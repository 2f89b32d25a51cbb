"""`ovi check --format json` prints the findings and a summary as one JSON object."""

import json

from _ovi import TestCase, main, ovi, scene, template


class JsonFormat(TestCase):
    def test_of_clean_files_has_no_findings(self):
        result = ovi("check", "--format", "json", self.write("A.template", template("A")))
        self.assertEqual(0, result.code)
        self.assertEqual(
            {"findings": [], "unreadable": [],
             "summary": {"files": 1, "errors": 0, "warnings": 0, "unreadable": 0}},
            json.loads(result.out))
        self.assertEqual("1 file, 0 errors, 0 warnings\n", result.err)

    def test_gives_file_line_level_and_message(self):
        path = self.write("A.template", template("A", "<attribute name='a' type='X'/>\n"))
        broken = self.write("b.template", "no markup")
        result = ovi("check", path, broken, "--format", "json")
        self.assertEqual(1, result.code)
        document = json.loads(result.out)
        self.assertEqual(
            {"file": str(path), "line": 4, "level": "warning",
             "message": "Unknown type 'X', creating custom type dynamically"},
            document["findings"][0])
        whole = document["findings"][-1]
        self.assertEqual((str(broken), None, "error"),
                         (whole["file"], whole["line"], whole["level"]))
        self.assertEqual(1, document["summary"]["warnings"])
        self.assertEqual(len(document["findings"]) - 1, document["summary"]["errors"])

    def test_names_unreadable_files(self):
        result = ovi("check", "missing.asset", "--format", "json")
        self.assertEqual(2, result.code)
        self.assertEqual([{"file": "missing.asset", "reason": "No such file or directory"}],
                         json.loads(result.out)["unreadable"])

    def test_is_valid_whatever_bytes_a_file_has(self):
        path = self.directory / "bytes.asset"
        text = scene("<asset name='a'><attribute property='x\"\\\n@'/></asset>\n")
        path.write_bytes(text.encode().replace(b"@", b"\xff\xfe\x01\xc3"))
        result = ovi("check", path, "--format", "json")
        self.assertEqual(1, result.code)
        self.assertEqual(1, len(json.loads(result.out)["findings"]))


if __name__ == "__main__":
    main()
