#!/usr/bin/env python3
"""Prints what a spreadsheet holds, one line a cell: sheet, cell, type, style's number format, value.
Reads the container by itself, as another program would."""
import sys
import xml.etree.ElementTree as ET
import zipfile

MAIN = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"

book = zipfile.ZipFile(sys.argv[1])
assert book.testzip() is None
names = [sheet.get("name") for sheet in ET.fromstring(book.read("xl/workbook.xml")).iter(MAIN + "sheet")]
styles = ET.fromstring(book.read("xl/styles.xml"))
codes = {f.get("numFmtId"): f.get("formatCode") for f in styles.iter(MAIN + "numFmt")}
formats = [codes.get(xf.get("numFmtId"), "") for xf in styles.find(MAIN + "cellXfs")]
for number, name in enumerate(names, 1):
    sheet = ET.fromstring(book.read(f"xl/worksheets/sheet{number}.xml"))
    pane = sheet.find(f".//{MAIN}pane")
    print(f"{name}|frozen|{pane.get('ySplit') if pane is not None else 0}")
    for cell in sheet.iter(MAIN + "c"):
        kind = cell.get("t", "n")
        value = cell.find(MAIN + "v")
        text = "".join(t.text or "" for t in cell.iter(MAIN + "t")) if kind == "inlineStr" else value.text
        if cell.find(MAIN + "f") is not None:
            kind = "formula"
        print(f"{name}|{cell.get('r')}|{kind}|{formats[int(cell.get('s', 0))]}|{text}")
