"""`ovi show` prints scenes and schemas as trees."""

from pathlib import Path

from _ovi import EXAMPLES, EXPECTED, TestCase, main, ovi, sample_schema, scene, template


class Show(TestCase):
    def expect(self, result, code, name):
        """Compares the output with a file, which the test never writes."""
        self.assertEqual((EXPECTED / name).read_text(encoding="utf-8"), result.out)
        self.assertEqual(code, result.code)

    def show(self, *arguments):
        return ovi("show", *arguments, cwd=EXPECTED)

    def test_prints_a_template_file(self):
        self.expect(self.show("shop.template"), 0, "shop.template.txt")

    def test_prints_what_a_scene_says(self):
        self.expect(self.show("--schema", "shop.template", "shop.asset"), 1, "shop.asset.txt")

    def test_prints_defaults_too_when_asked_for_all(self):
        self.expect(self.show("--schema", "shop.template", "--all", "shop.asset"), 1,
                    "shop.asset.all.txt")

    def test_prints_levels_of_detail_nodes_anchors_geometry_and_views(self):
        self.expect(self.show("rig.template"), 0, "rig.template.txt")

    def test_prints_bindings_attached_anchors_and_alternates(self):
        self.expect(self.show("--schema", "rig.template", "rig.asset"), 1, "rig.asset.txt")

    def test_prints_what_is_not_bound_when_asked_for_all(self):
        self.expect(self.show("--schema", "rig.template", "--all", "rig.asset"), 1,
                    "rig.asset.all.txt")

    def test_bears_deeply_nested_groups(self):
        depth = 20000
        path = self.write("Deep.template", template(
            "Deep", "<view name='v' template='Deep'>" + "<group name='g'>" * depth +
            "</group>" * depth + "</view>\n"))
        result = ovi("show", path)
        self.assertEqual((0, ""), (result.code, result.err))
        self.assertEqual(depth, result.out.count("group g\n"))

    def test_prints_findings_on_the_error_stream(self):
        result = self.show("--schema", "shop.template", "shop.asset")
        self.assertEqual(
            "shop.asset:5: warning: Using version 1 of template 'shop.Article' while there is a "
            "version 2 that is more recent\n", result.err)

    def test_prints_a_template_file_that_is_part_of_the_schema(self):
        path = "modeling/studio/props/Prop.template"
        result = ovi("show", *sample_schema(Path(".")), path, cwd=EXAMPLES / "schema")
        self.assertEqual((0, ""), (result.code, result.err))
        self.assertTrue(result.out.startswith(f"{path}: 0 types, 1 enumeration, 5 templates\n"))
        self.assertIn("\n    property finish: studio.props.Finish\n      default instance "
                      "plain_finish\n", result.out)

    def test_of_a_missing_file_prints_nothing(self):
        result = ovi("show", "missing.asset")
        self.assertEqual((2, ""), (result.code, result.out))
        self.assertEqual(
            "ovi: error: cannot read 'missing.asset': No such file or directory\n", result.err)

    def test_bears_deep_nesting(self):
        depth = 20000
        self.write("Box.template", template(
            "Box", "<attribute name='inner' type='Box' reference='true'/>\n", package=""))
        start = ("<asset name='b{}'><implements template='Box' version='1'/>"
                 "<attribute property='Box.inner'>\n")
        path = self.write("deep.asset", scene(
            "".join(start.format(i) for i in range(depth)) + "</attribute></asset>\n" * depth))
        result = ovi("show", "--schema", self.directory / "Box.template", path)
        self.assertEqual((0, ""), (result.code, result.err))
        self.assertIn(f"instance b{depth - 1}\n", result.out)


if __name__ == "__main__":
    main()
