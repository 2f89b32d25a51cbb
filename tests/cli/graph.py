"""`ovi graph` draws the inheritance of the templates of a schema."""

import os
import re
import shutil
import unittest

from _ovi import EMULATOR, EXPECTED, TestCase, main, ovi, template

ANIMALS = """<?xml version='1.0' encoding='UTF-8'?>
<templates package='zoo'>
<template name='Living'><attribute name='age' type='INT32'/></template>
<template name='Winged'/>
<template name='Cage'/>
<template name='Animal'><extends template='Living'/>
  <attribute name='cage' type='Cage'/>
  <extends template='Winged' version='2'/>
  <attribute name='weight' type='FLOAT' version='2'/>
</template>
<template name='Dog'><extends template='Animal' templateVersion='1'/></template>
<template name='Cat'><extends template='Animal' templateVersion='2'/></template>
<template name='Rock'><attribute name='below' type='Rock' reference='true'/></template>
</templates>
"""


class Graph(TestCase):
    def setUp(self):
        super().setUp()
        self.schema = self.write("zoo/Animals.template", ANIMALS)

    def draw(self, *arguments):
        result = ovi("graph", "--schema", self.schema, *arguments)
        self.assertEqual((0, ""), (result.code, result.err))
        return result.out

    def links(self, dot):
        """The arrows as {(from, to): attributes}, without the packages."""
        found = re.findall(r'"zoo\.(\w+)":(\w+)[^>]*-> "zoo\.(\w+)":head\S* \[(.*)\];', dot)
        return {(f"{a}.{port}" if port != "head" else a, b): rest for a, port, b, rest in found}

    def test_has_a_cluster_for_each_package_and_a_node_for_each_template(self):
        self.write("zoo/Other.template", template("Other", package="park.north"))
        dot = self.draw("--schema", self.directory / "zoo" / "Other.template")
        clusters = dict(re.findall(r'subgraph "cluster_([\w.]+)" \{(.*?)\n  \}', dot, re.DOTALL))
        nodes = {package: re.findall(r'^    "([\w.]+)" \[', body, re.MULTILINE)
                 for package, body in clusters.items()}
        self.assertEqual({
            "zoo": ["zoo." + name for name in
                    ("Animal", "Cage", "Cat", "Dog", "Living", "Rock", "Winged")],
            "park.north": ["park.north.Other"]}, nodes)

    def test_names_versions_and_what_they_changed(self):
        dot = self.draw()
        node = re.search(r'"zoo\.Animal" \[.*', dot).group(0)
        text = re.sub("<[^>]*>", "|", node)
        self.assertIn("versions 1 to 2", text)
        for wanted in ("|cage: Cage|", "|weight: FLOAT"):
            self.assertIn(wanted, text)
        self.assertIn("|below: &#8594; Rock|", re.sub("<[^>]*>", "|", dot))
        self.assertEqual(1, text.count("from version 2"))
        self.assertEqual(1, text.count("cage"))

    def test_links_templates_to_their_parents(self):
        links = self.links(self.draw())
        self.assertEqual(
            {("Animal", "Living"), ("Animal", "Winged"), ("Dog", "Animal"), ("Cat", "Animal"),
             ("Animal.p0", "Cage"), ("Rock.p0", "Rock")}, set(links))
        self.assertIn("style=solid", links["Animal", "Living"])
        self.assertIn('style=dashed, label="from version 2"', links["Animal", "Winged"])
        self.assertIn('headlabel=" v1 "', links["Dog", "Animal"])
        self.assertNotIn("headlabel", links["Cat", "Animal"])

    def test_tells_holding_an_instance_from_referring_to_one(self):
        links = self.links(self.draw())
        self.assertIn("style=solid", links["Animal.p0", "Cage"])
        self.assertIn("style=dotted", links["Rock.p0", "Rock"])
        self.assertIn("constraint=false", links["Animal.p0", "Cage"])

    def test_marks_kinds_of_properties_by_colour(self):
        dot = ovi("graph", "--schema", EXPECTED / "rig.template").out
        colours = dict((name, colour) for colour, name in
                       re.findall(r'port="p\d+" bgcolor="(#\w+)">(\w+)', dot))
        legend = dict((name, colour) for colour, name in
                      re.findall(r'color="#b0b0b0" bgcolor="(#\w+)">(\w+)<', dot))
        self.assertEqual(4, len(set(legend.values())))
        self.assertEqual(
            {"load": legend["attribute"], "pivot": legend["node"], "hook": legend["anchor"],
             "ring": legend["anchor"], "body": legend["geometry"]}, colours)

    def test_of_one_template_has_its_ancestors_and_descendants(self):
        nodes = re.findall(r'^    "zoo\.(\w+)" \[', self.draw("--template", "zoo.Dog"),
                           re.MULTILINE)
        self.assertEqual(["Animal", "Dog", "Living", "Winged"], nodes)
        nodes = re.findall(r'^    "zoo\.(\w+)" \[', self.draw("--template", "zoo.Living"),
                           re.MULTILINE)
        self.assertEqual(["Animal", "Cat", "Dog", "Living"], nodes)

    def test_of_an_unknown_template_is_a_finding(self):
        result = ovi("graph", "--schema", self.schema, "--template", "zoo.Unicorn")
        self.assertEqual((1, "", "zoo.Unicorn: error: Template not found: 'zoo.Unicorn'\n"),
                         (result.code, result.out, result.err))

    def test_is_drawn_in_spite_of_findings_which_go_to_the_error_stream(self):
        self.write("zoo/Bad.template", template("Bad", "<attribute name='a' type='X'/>\n"))
        result = ovi("graph", "--schema", "zoo", cwd=self.directory)
        self.assertEqual(1, result.code)
        self.assertIn("zoo/Bad.template:4: warning: Unknown type 'X'", result.err)
        self.assertIn('"test.Bad"', result.out)

    def test_goes_to_a_file_when_asked_to(self):
        path = self.directory / "graph.dot"
        self.assertEqual("", self.draw("-o", path))
        self.assertEqual(self.draw(), path.read_text(encoding="utf-8"))

    def test_cannot_go_to_a_directory_that_is_not_there(self):
        result = ovi("graph", "--schema", self.schema, "-o", "nowhere/graph.dot",
                     cwd=self.directory)
        self.assertEqual((2, ""), (result.code, result.out))
        self.assertEqual(
            "ovi: error: cannot write 'nowhere/graph.dot': No such file or directory\n", result.err)

    @unittest.skipIf(EMULATOR or not shutil.which("dot"), "Graphviz is not installed")
    def test_becomes_svg_with_graphviz(self):
        svg = self.draw("--format", "svg")
        self.assertIn("<svg ", svg)
        for name in ("Animal", "Living", "versions 1 to 2", "weight: FLOAT"):
            self.assertIn(f">{name}", svg)

    def test_as_svg_needs_graphviz_on_the_path(self):
        result = ovi("graph", "--format", "svg",
                     env={**os.environ, "PATH": str(self.directory)})
        self.assertEqual((2, ""), (result.code, result.out))
        self.assertEqual(
            "ovi: error: SVG is drawn by Graphviz' program dot, which is not on the PATH; install "
            "Graphviz, or take --format dot\n", result.err)


if __name__ == "__main__":
    main()
