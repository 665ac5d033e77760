#!/usr/bin/env python3
"""What LibreOffice shows for format codes and values, one line each for format_table:

    tests/basic/formats/libreoffice.py | build/release/tests/basic/formats/format_table
"""

import csv
import json
import pathlib
import subprocess
import tempfile
import zipfile
from xml.sax.saxutils import quoteattr

NUMBERS = [0, 1, -1, 0.5, -0.5, 12.3456789, -1234.567, -0.04, 1234567.891, 0.000123, 1e-12, 99999999999.5, 0.999, 2.675]
DATES = [0.25, 1, 59.5, 61, 45000.51, 45291.999994, 2958465]
FORMATS = {
    tuple(NUMBERS): [
        "General", "0", "0.00", "#.##", "#,##0", "#,##0.00", "#,##0.0,,\"M\"", "0.0,", "0%", "0.00%", "000000",
        "0.00E+00", "##0.0E+0", "# ?/?", "# ??/??", "# ?/8", "?/?", "#,##0;(#,##0)", "0.0;-0.0;\"zero\"",
        "[Red]0.0;[Blue]-0.0", "[<1]0.000;[>1000]#,##0;0.0", "\"n: \"0.0", "0.0\" kg\"", "?0.0?", "#,##0.00 [$€-407]",
        "_($* #,##0.00_);_($* (#,##0.00);_($* \"-\"??_);_(@_)", "(000) 000-0000", "0;;", ";;;", "0.0##",
    ],
    tuple(DATES): [
        "yyyy-mm-dd", "d.m.yy", "dddd, d mmmm yyyy", "ddd mmm", "mmmmm", "h:mm", "h:mm AM/PM", "hh:mm:ss", "mm:ss.0",
        "[h]:mm", "[mm]:ss", "[ss].00", "yyyy-mm-dd hh:mm:ss", "m/d/yyyy h:mm", "h \"h\" m", "hh:mm:ss.000",
    ],
    ("some text", True): ["General", "0.00", "@", "\"<\"@\">\"", "0;0;0;\"[\"@\"]\"", "yyyy"],
}
MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
OFFICE = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
PACKAGE = "http://schemas.openxmlformats.org/package/2006"


def cell(style, value):
    if isinstance(value, bool):
        return f'<c s="{style}" t="b"><v>{int(value)}</v></c>'
    if isinstance(value, str):
        return f'<c s="{style}" t="inlineStr"><is><t>{value}</t></is></c>'
    return f'<c s="{style}"><v>{value!r}</v></c>'


def write_book(path, cases):
    codes = list(dict.fromkeys(code for code, _ in cases))
    formats = "".join(f'<numFmt numFmtId="{164 + i}" formatCode={quoteattr(c)}/>' for i, c in enumerate(codes))
    styles = "".join(f'<xf numFmtId="{164 + i}" applyNumberFormat="1"/>' for i in range(len(codes)))
    rows = "".join(f"<row>{cell(codes.index(code), value)}</row>" for code, value in cases)
    kind = "application/vnd.openxmlformats-officedocument.spreadsheetml."
    parts = {
        "[Content_Types].xml": f'<Types xmlns="{PACKAGE}/content-types"><Default Extension="rels" '
        'ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
        f'<Override PartName="/book.xml" ContentType="{kind}sheet.main+xml"/>'
        f'<Override PartName="/sheet.xml" ContentType="{kind}worksheet+xml"/>'
        f'<Override PartName="/styles.xml" ContentType="{kind}styles+xml"/></Types>',
        "_rels/.rels": f'<Relationships xmlns="{PACKAGE}/relationships"><Relationship Id="r1" '
        f'Type="{OFFICE}/officeDocument" Target="book.xml"/></Relationships>',
        "book.xml": f'<workbook xmlns="{MAIN}" xmlns:r="{OFFICE}"><sheets><sheet name="S" sheetId="1" '
        'r:id="r1"/></sheets></workbook>',
        "_rels/book.xml.rels": f'<Relationships xmlns="{PACKAGE}/relationships"><Relationship Id="r1" '
        f'Type="{OFFICE}/worksheet" Target="sheet.xml"/><Relationship Id="r2" Type="{OFFICE}/styles" '
        'Target="styles.xml"/></Relationships>',
        # Wide enough that nothing is shown as ###.
        "sheet.xml": f'<worksheet xmlns="{MAIN}"><cols><col min="1" max="1" width="200" customWidth="1"/></cols>'
        f"<sheetData>{rows}</sheetData></worksheet>",
        "styles.xml": f'<styleSheet xmlns="{MAIN}"><numFmts>{formats}</numFmts><fonts><font/></fonts><fills><fill/>'
        f"</fills><borders><border/></borders><cellXfs>{styles}</cellXfs></styleSheet>",
    }
    with zipfile.ZipFile(path, "w") as book:
        for name, content in parts.items():
            book.writestr(name, '<?xml version="1.0" encoding="UTF-8"?>' + content)


def main():
    cases = [(code, value) for values, codes in FORMATS.items() for code in codes for value in values]
    with tempfile.TemporaryDirectory() as folder:
        book = pathlib.Path(folder) / "cases.xlsx"
        write_book(book, cases)
        # Comma, quotes, UTF-8, from the first row, American, as shown.
        subprocess.run(
            ["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to",
             "csv:Text - txt - csv (StarCalc):44,34,76,1,,1033,false,true", "--outdir", folder, book],
            check=True, stdout=subprocess.DEVNULL)
        with open(book.with_suffix(".csv"), newline="", encoding="utf-8") as file:
            shown = [row[0] if row else "" for row in csv.reader(file)]
    for (code, value), text in zip(cases, shown, strict=True):
        print(code, json.dumps(value), text, sep="\t")


main()
