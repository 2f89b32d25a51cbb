"""`ovi pack` packs the values of an asset and prints what lies where."""

import json
import struct

from _ovi import EXPECTED, TestCase, main, ovi, scene, template

SCHEMA = template("Box", """
<attribute name='a_flag' type='BOOL'/>
<attribute name='b_wide' type='DOUBLE'/>
<attribute name='c_small' type='UINT16'/>
<attribute name='d_size' type='Size'/>
<attribute name='e_name' type='STRING'/>
<attribute name='f_codes' type='Codes'/>
<attribute name='g_unset' type='INT32' default='7'/>
<node name='h_node'/>
<geometry name='i_mesh'/>
""", "<type name='Size' type='FLOAT' dim='3'/><type name='Codes' type='INT32' dim='0'/>", "")

SCENE = scene("""<asset name='box'><implements template='Box'/>
<attribute property='Box.a_flag' value='true'/>
<attribute property='Box.b_wide' value='0.5'/>
<attribute property='Box.c_small' value='513'/>
<attribute property='Box.d_size'><value>1</value><value>2</value><value>-3</value></attribute>
<attribute property='Box.e_name' value='crate'/>
<attribute property='Box.f_codes'><value>5</value><value>-6</value></attribute>
<node property='Box.h_node' binding='box|root'/>
</asset>
<asset name='empty'/>
""")


class Pack(TestCase):
    def setUp(self):
        super().setUp()
        self.schema = self.write("Box.template", SCHEMA)
        self.scene = self.write("box.asset", SCENE)
        self.output = self.directory / "box.bin"

    def pack(self, *arguments, asset="box"):
        return ovi("pack", "--schema", self.schema, "--asset", asset, *arguments, self.scene)

    def map_and_bytes(self, *arguments):
        result = self.pack("--format", "json", "--hex", "-o", self.output, *arguments)
        self.assertEqual((0, ""), (result.code, result.err))
        return json.loads(result.out), self.output.read_bytes()

    def by_name(self, document):
        return {value["property"].split(".")[1]: value for value in document["values"]}

    def test_writes_the_values_of_every_type(self):
        document, data = self.map_and_bytes()
        values = self.by_name(document)
        for name, form, wanted in (
                ("a_flag", "<?", (True,)), ("b_wide", "<d", (0.5,)), ("c_small", "<H", (513,)),
                ("d_size", "<3f", (1, 2, -3)), ("e_name", "<I5s", (5, b"crate")),
                ("f_codes", "<i2i", (2, 5, -6)), ("g_unset", "<i", (0,))):
            with self.subTest(name=name):
                place = values[name]
                self.assertEqual(struct.calcsize(form), place["size"])
                self.assertEqual(wanted, struct.unpack_from(form, data, place["offset"]))

    def test_maps_every_byte(self):
        for offset in (0, 1, 6, 4099):
            with self.subTest(offset=offset):
                document, data = self.map_and_bytes("--offset", str(offset))
                self.assertEqual(offset, document["start"])
                self.assertEqual(len(data), document["size"])
                end = offset
                for value in document["values"]:
                    self.assertEqual(end + value["padding"], value["offset"])
                    self.assertEqual(bytes(value["padding"]),
                                     data[end - offset:value["offset"] - offset])
                    end = value["offset"] + value["size"]
                    self.assertEqual(bytes.fromhex(value["bytes"]),
                                     data[value["offset"] - offset:end - offset])
                self.assertEqual(offset + len(data), end)

    def test_aligns_values_by_their_offsets(self):
        alignments = {"a_flag": 1, "b_wide": 8, "c_small": 2, "d_size": 4, "g_unset": 4}
        for offset in range(9):
            values = self.by_name(self.map_and_bytes("--offset", str(offset))[0])
            for name, alignment in alignments.items():
                self.assertEqual(0, values[name]["offset"] % alignment, (offset, name))
                self.assertLess(values[name]["padding"], alignment)

    def test_prints_a_table(self):
        result = self.pack()
        self.assertEqual((0, ""), (result.code, result.err))
        self.assertEqual("""asset box: 60 bytes from offset 0
 padding   offset     size  property
       0        0        1  Box.a_flag: attribute BOOL = true
       7        8        8  Box.b_wide: attribute DOUBLE = 0.5
       0       16        2  Box.c_small: attribute UINT16 = 513
       2       20       12  Box.d_size: attribute Size = 1, 2, -3
       0       32        9  Box.e_name: attribute STRING = "crate"
       3       44       12  Box.f_codes: attribute Codes = 5, -6
       0       56        4  Box.g_unset: attribute INT32 = no value, packed as zero
       0       60        0  Box.h_node: node = not packable without a type
       0       60        0  Box.i_mesh: geometry = geometry is not packable
OviInstance_WriteToBinary uses 0 bytes for this asset
""", result.out)

    def test_prints_the_bytes_when_asked_to(self):
        lines = self.pack("--hex").out.splitlines()
        at = next(i for i, line in enumerate(lines) if "Box.e_name" in line)
        self.assertEqual("05 00 00 00 63 72 61 74 65", lines[at + 1].strip())

    def test_packs_one_property(self):
        document, data = self.map_and_bytes("--property", "Box.b_wide", "--offset", "3")
        self.assertEqual(["Box.b_wide"], [value["property"] for value in document["values"]])
        self.assertEqual((5, 8), (document["values"][0]["padding"],
                                  document["values"][0]["offset"]))
        self.assertEqual(bytes(5) + struct.pack("<d", 0.5), data)

    def test_of_an_asset_without_properties_is_empty(self):
        result = self.pack("-o", self.output, asset="empty")
        self.assertEqual(0, result.code)
        self.assertEqual(b"", self.output.read_bytes())

    def test_tells_that_the_library_packs_nothing_of_nested_instances(self):
        result = ovi("pack", "--schema", "shop.template", "--asset", "atlas", "shop.asset",
                     cwd=EXPECTED)
        self.assertEqual(1, result.code)  # the scene uses an older version
        self.assertIn("0  Article.dealer: attribute shop.Dealer = instances, of which the library "
                      "packs nothing\n", result.out)

    def test_of_an_unknown_asset_or_property_is_a_finding(self):
        for arguments, asset, message in (
                ([], "crate", "Asset not found: 'crate'"),
                (["--property", "Box.z"], "box", "Property not found: 'Box.z' in the asset 'box'")):
            with self.subTest(asset=asset):
                result = self.pack("-o", self.output, *arguments, asset=asset)
                self.assertEqual((1, "", f"{self.scene}: error: {message}\n"),
                                 (result.code, result.out, result.err))
                self.assertFalse(self.output.exists())

    def test_could_not_run_without_an_asset_a_scene_or_a_place_to_write(self):
        for arguments in (["--asset", "box", "missing.asset"],
                          ["--asset", "box", str(self.schema)],
                          ["--asset", "box", "--offset", "-1", str(self.scene)],
                          ["--asset", "box", "-o", "nowhere/x", str(self.scene)],
                          [str(self.scene)]):
            with self.subTest(arguments=arguments):
                result = ovi("pack", "--schema", self.schema, *arguments, cwd=self.directory)
                self.assertEqual((2, ""), (result.code, result.out))
                self.assertNotEqual("", result.err)


if __name__ == "__main__":
    main()
