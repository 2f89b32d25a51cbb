"""`ovi fmt` writes files anew in the library's own layout, and loses nothing in silence."""

import os
import re
import shutil
import unittest

from _ovi import EXAMPLES, FOR_WINDOWS, TestCase, main, ovi, sample_schema, scene, template

BOX = """<?xml version="1.0" encoding="UTF-8"?>
<templates package="test"><!-- Across   both -->
<type dim="2" name="Pair" type="FLOAT"/>
<template name="Box"><label>Box</label><label language="de">Kiste</label>
<attribute version="1" type="FLOAT" name="width" default="1.50" min="0"/>
<attribute name='inner' type='Box' reference='1'/><node name='root'/>
</template></templates>
"""
BOX_FORMATTED = """<?xml version='1.0' encoding='UTF-8'?>
<templates package='test'>
	<!-- Across   both -->
	<type name='Pair' type='FLOAT' dim='2'/>
	<template name='Box'>
		<label>Box</label>
		<label language='de'>Kiste</label>
		<attribute name='width' type='FLOAT' default='1.5' min='0'/>
		<attribute name='inner' type='test.Box' reference='true'/>
		<node name='root'/>
	</template>
</templates>"""


class Fmt(TestCase):
    def setUp(self):
        super().setUp()
        self.box = self.write("Box.template", BOX)

    def fmt(self, *arguments):
        return ovi("fmt", *arguments, cwd=self.directory)

    def format_scene(self, content, *arguments):
        """Formats a scene and gives the result, the text before and the text after."""
        path = self.write("a.asset", scene("<asset name='a'><implements template='test.Box'/>"
                                           f"{content}</asset>\n"))
        before = path.read_text(encoding="utf-8")
        result = self.fmt("--schema", "Box.template", *arguments, "a.asset")
        return result, before, path.read_text(encoding="utf-8")

    def test_writes_a_template_file_in_the_layout_of_the_library(self):
        result = self.fmt("Box.template")
        self.assertEqual((0, "changed Box.template\n", ""), (result.code, result.out, result.err))
        self.assertEqual(BOX_FORMATTED, self.box.read_text(encoding="utf-8").rstrip("\n"))

    def test_changes_nothing_the_second_time(self):
        self.fmt("Box.template")
        before = self.box.read_bytes()
        result = self.fmt("Box.template")
        self.assertEqual((0, "", ""), (result.code, result.out, result.err))
        self.assertEqual(before, self.box.read_bytes())

    def test_only_names_the_files_that_would_change_when_checking(self):
        result = self.fmt("--check", "Box.template")
        self.assertEqual((1, "would change Box.template\n", ""),
                         (result.code, result.out, result.err))
        self.assertEqual(BOX, self.box.read_text(encoding="utf-8"))
        self.fmt("Box.template")
        result = self.fmt("--check", "Box.template")
        self.assertEqual((0, "", ""), (result.code, result.out, result.err))

    def test_writes_a_scene_in_the_layout_of_the_library(self):
        result, _, after = self.format_scene("<attribute property='Box.width' value='2.0'/>")
        self.assertEqual((0, "changed a.asset\n", ""), (result.code, result.out, result.err))
        self.assertIn("<implements template='test.Box' version='1'/>", after)
        self.assertRegex(after, r"<attribute property='Box.width'[^>]* value='2'/>")
        result = self.fmt("--schema", "Box.template", "a.asset")
        self.assertEqual((0, ""), (result.code, result.out))

    def test_refuses_a_scene_that_would_lose_what_the_library_does_not_write(self):
        for content, message in (
                ("<attribute property='Box.width' lockValue='1'/>", "'lockValue' of <attribute>"),
                ("<attribute property='Box.width' lockBinding='t'/>",
                 "'lockBinding' of <attribute>"),
                ("<node property='Box.root' binding='b'/>", "'binding' of <node>"),
                ("<attribute property='Box.width' value='1' colour='red'/>",
                 "'colour' of <attribute>")):
            with self.subTest(content=content):
                result, before, after = self.format_scene(content)
                self.assertEqual(
                    (1, "", f"a.asset:3: error: Formatting would lose {message}\n"),
                    (result.code, result.out, result.err))
                self.assertEqual(before, after)
                result, _, after = self.format_scene(content, "--force")
                self.assertEqual(
                    (1, "changed a.asset\n",
                     f"a.asset:3: warning: Formatting would lose {message}\n"),
                    (result.code, result.out, result.err))
                self.assertNotEqual(before, after)

    def test_refuses_to_lose_the_reference_of_an_asset(self):
        path = self.write("r.asset", scene("<asset name='a' reference='b.asset'/>\n"))
        before = path.read_bytes()
        result = self.fmt("r.asset")
        self.assertEqual((1, "r.asset:3: error: Formatting would lose 'reference' of <asset>\n"),
                         (result.code, result.err))
        self.assertEqual(before, path.read_bytes())

    def test_takes_a_lock_that_is_not_set_for_none(self):
        result, _, after = self.format_scene(
            "<attribute property='Box.width' lockValue='0' lockBinding='false'/>")
        self.assertEqual((0, ""), (result.code, result.err))
        self.assertNotIn("lock", after)

    def test_refuses_to_change_a_value(self):
        self.write("Far.template", template(
            "Far", head="<lod name='F' type='surface' threshold='9'/>"))
        result = self.fmt("Far.template")
        self.assertEqual(
            (1, "", "Far.template:3: error: Formatting would lose 'threshold' of <lod>\n"),
            (result.code, result.out, result.err))
        self.write("Many.template", template("Many", "<attribute name='m' type='FLOAT' "
                                                     "default='0.1x'/>\n"))
        result = self.fmt("Many.template")
        self.assertEqual(
            (1, "Many.template:4: error: Formatting would change 'default' of <attribute> from "
                "'0.1x' to '0.1'\n"), (result.code, result.err))

    def test_refuses_bounds_that_the_library_does_not_read(self):
        self.write("A.template", template("A", "<attribute name='m' type='FLOAT' max='3'/>\n"))
        result = self.fmt("A.template")
        self.assertEqual((1, "A.template:4: error: Formatting would lose 'max' of <attribute>\n"),
                         (result.code, result.err))

    def test_warns_of_comments_and_elements_that_the_library_does_not_store(self):
        result, _, after = self.format_scene("<!-- gone --><sparkle/>words")
        self.assertEqual(1, result.code)
        self.assertEqual(
            "a.asset:3: warning: Formatting does not keep this comment\n"
            "a.asset:3: warning: Formatting does not keep the element <sparkle>\n"
            "a.asset:3: warning: Formatting does not keep these characters\n", result.err)
        self.assertNotIn("gone", after)

    def test_reads_files_as_the_library_does(self):
        """Any character serves as a quote, and a tag ends at its first bracket."""
        result, _, after = self.format_scene("<attribute property=|Box.width| value=|3|/>")
        self.assertEqual((0, ""), (result.code, result.err))
        self.assertIn("value='3'", after)
        result, before, after = self.format_scene(
            "<attribute property=|Box.width| lockValue=|1|/>")
        self.assertEqual((1, before), (result.code, after))
        result, before, after = self.format_scene("<!-- a > b -->")  # an element to the library
        self.assertEqual((1, "", before), (result.code, result.out, after))

    def test_leaves_warning_of_unknown_elements_to_the_library_where_it_does(self):
        self.write("A.template", template("A", "<sparkle/>\n"))
        result = self.fmt("A.template")
        self.assertEqual(1, result.code)
        self.assertEqual("A.template:4: warning: Unknown element <sparkle> was ignored and will "
                         "not be saved\n", result.err)

    def test_does_not_write_a_file_with_errors(self):
        path = self.write("A.template", template("A", "<attribute name='a' type='INT32'/>\n"
                                                      "<extends template='Nobody'/>\n"))
        before = path.read_bytes()
        for arguments in ([], ["--force"]):
            result = self.fmt(*arguments, "A.template", "Box.template")
            self.assertEqual((1, "A.template:5: error: Template not found: 'Nobody'\n"),
                             (result.code, result.err))
            self.assertEqual(before, path.read_bytes())
        self.assertNotEqual(BOX, self.box.read_text(encoding="utf-8"))

    def test_refuses_views_of_templates_of_other_files(self):
        self.fmt("Box.template")
        self.write("View.template", template(
            "Other", head="<view name='Far' template='test.Box'/>\n"))
        result = self.fmt("Box.template", "View.template")
        self.assertEqual((1, ""), (result.code, result.out))
        self.assertEqual(
            "Box.template: error: Formatting would add the view 'Far', which another file defines\n"
            "View.template:3: error: Formatting would lose the element <view>\n", result.err)

    @unittest.skipIf(FOR_WINDOWS, "access rights and links are others there")
    def test_keeps_the_access_rights_of_a_file_and_the_links_to_it(self):
        os.symlink(self.box, self.directory / "Link.template")
        self.box.chmod(0o640)
        self.assertEqual(0, self.fmt("Link.template").code)
        self.assertTrue((self.directory / "Link.template").is_symlink())
        self.assertEqual(0o640, self.box.stat().st_mode & 0o777)

    def test_could_not_run_without_a_file_that_can_be_read(self):
        for arguments in ([], ["missing.template"], ["--check"]):
            with self.subTest(arguments=arguments):
                result = self.fmt(*arguments)
                self.assertEqual((2, ""), (result.code, result.out))
                self.assertNotEqual("", result.err)

    def test_formats_the_samples_without_a_loss(self):
        """All but comments: what is formatted says the same, and formatting it again is idle."""
        shutil.copytree(EXAMPLES, self.directory / "examples")
        schema = sample_schema(self.directory / "examples" / "schema")
        files = sorted((self.directory / "examples" / "schema").rglob("*.template"))
        shown = [self.show(*schema, path) for path in files]
        result = ovi("fmt", *schema, *files)
        for line in result.err.splitlines():
            self.assertRegex(line, r"warning: Formatting does not keep (this comment|the element)")
        again = ovi("fmt", *schema, *files)
        self.assertEqual((0, "", ""), (again.code, again.out, again.err))
        for before, path in zip(shown, files):
            with self.subTest(file=path.name):
                self.assertEqual(sorted(before.splitlines()),
                                 sorted(self.show(*schema, path).splitlines()))

    def show(self, *arguments):
        result = ovi("show", *arguments)
        self.assertEqual((0, ""), (result.code, result.err))
        return result.out

    def test_formats_the_sample_scenes_once_when_forced(self):
        shutil.copytree(EXAMPLES, self.directory / "examples")
        schema = sample_schema(self.directory / "examples" / "schema")
        scenes = sorted((self.directory / "examples" / "scenes").glob("*.asset"))
        self.assertGreater(len(scenes), 5)
        ovi("fmt", "--force", *schema, *scenes)
        result = ovi("fmt", *schema, *scenes)
        self.assertEqual("", result.out)
        self.assertIsNone(re.search("error", result.err), result.err)


if __name__ == "__main__":
    main()
