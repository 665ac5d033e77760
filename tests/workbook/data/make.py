#!/usr/bin/python3
"""Writes the workbooks of this folder anew (see README.md)."""

import datetime
import os
import shutil
import subprocess
import tempfile

import openpyxl
import xlsxwriter
from openpyxl.workbook.defined_name import DefinedName

HERE = os.path.dirname(os.path.abspath(__file__))
DAY = datetime.datetime(2026, 2, 3, 20, 30, 45)


def with_xlsxwriter(path, date_1904):
    book = xlsxwriter.Workbook(path, {"date_1904": date_1904})
    prices = book.add_worksheet("Prices")
    formats = {code: book.add_format({"num_format": code}) for code in
               ("#,##0.00", "0.0%", "yyyy-mm-dd hh:mm:ss", "h:mm AM/PM", "00000", '0 "pcs"', "@")}
    bold = book.add_format({"bold": True})
    prices.write_row("A1", ["Name", "", "Price"])
    prices.write_rich_string("A2", "Old ", bold, "town", " tour ")
    prices.write_number("C2", 1234.5, formats["#,##0.00"])
    prices.write_datetime("D2", DAY, formats["yyyy-mm-dd hh:mm:ss"])
    prices.write_datetime("E2", DAY, formats["h:mm AM/PM"])
    prices.write_boolean("F2", True)
    prices.write_string("A3", "two\nlines")
    prices.write_number("C3", 0.256, formats["0.0%"])
    prices.write_formula("D3", "=C2*2", None, 2469)
    prices.write_formula("E3", '="a"&"b"', None, "ab")
    prices.write_formula("F3", "=1/0", None, "#DIV/0!")
    prices.write_number("C4", 42, formats["00000"])
    prices.write_number("D4", 7, formats['0 "pcs"'])
    prices.write_string("E4", "007", formats["@"])
    prices.merge_range("A5:C5", "merged")
    prices.write_string("D5", "Ünïcödé \U0001F600 <&>")
    prices.set_row(2, None, None, {"hidden": True})
    prices.set_column("C:C", None, None, {"hidden": True})
    chart = book.add_chart({"type": "line"})
    chart.add_series({"values": "=Prices!$C$2:$C$4"})
    book.add_chartsheet("Chart").set_chart(chart)
    hidden = book.add_worksheet("Straße")
    hidden.write("B2", "inside")
    hidden.hide()
    book.define_name("Block", "=Prices!$A$1:$C$3")
    book.define_name("Straße!Local", "=Straße!$B$2")
    book.define_name("Half", "=0.5")
    book.close()


def with_openpyxl(path):
    book = openpyxl.Workbook()
    sheet = book.active
    sheet.title = "Data"
    sheet.append(["Gate", "Flight", "Time", "Delay", "Open"])
    sheet.append([7, "LX 12", DAY, datetime.timedelta(hours=30, minutes=5), True])
    sheet.append([12.5, None, datetime.date(2026, 2, 3), -0.125, False])
    sheet["D2"].number_format = "[h]:mm"
    sheet["D3"].number_format = "0.00;[Red](0.00)"
    sheet["A5"] = "=A2+A3"
    sheet["B5"] = "  kept  "
    book.defined_names.append(DefinedName("Head", attr_text="Data!$A$1:$E$1"))
    streamed = book.create_sheet("Very hidden")
    streamed.sheet_state = "veryHidden"
    streamed["C3"] = 1
    book.save(path)


def with_libreoffice(folder):
    table = ('<table:table table:name="{name}"{style}><table:table-row>'
             '<table:table-cell office:value-type="string"><text:p>City</text:p></table:table-cell>'
             '<table:table-cell office:value-type="string"><text:p>Share</text:p></table:table-cell>'
             '<table:table-cell office:value-type="string"><text:p>Since</text:p></table:table-cell></table:table-row>'
             '<table:table-row><table:table-cell office:value-type="string">'
             '<text:p>Zürich <text:span text:style-name="bold">West</text:span></text:p></table:table-cell>'
             '<table:table-cell table:style-name="share" office:value-type="percentage" office:value="0.4567"/>'
             '<table:table-cell table:style-name="day" office:value-type="date" office:date-value="2026-02-03"/>'
             '</table:table-row><table:table-row table:number-rows-repeated="2"><table:table-cell/></table:table-row>'
             '<table:table-row><table:table-cell table:formula="of:=1+1" office:value-type="float" office:value="2"/>'
             '<table:table-cell table:formula="of:=[.A5]&gt;1" office:value-type="boolean" office:boolean-value="true"/>'
             '<table:table-cell office:value-type="time" table:style-name="clock" office:time-value="PT08H05M00S"/>'
             '</table:table-row></table:table>')
    document = (
        '<?xml version="1.0" encoding="UTF-8"?><office:document '
        'xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" '
        'xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" '
        'xmlns:number="urn:oasis:names:tc:opendocument:xmlns:datastyle:1.0" '
        'xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0" '
        'xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" '
        'xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" office:version="1.2" '
        'xmlns:of="urn:oasis:names:tc:opendocument:xmlns:of:1.2" '
        'office:mimetype="application/vnd.oasis.opendocument.spreadsheet"><office:automatic-styles>'
        '<number:percentage-style style:name="N1"><number:number number:decimal-places="1" '
        'number:min-integer-digits="1"/><number:text>%</number:text></number:percentage-style>'
        '<number:date-style style:name="N2"><number:day number:style="long"/><number:text>.</number:text>'
        '<number:month number:style="long"/><number:text>.</number:text><number:year number:style="long"/>'
        '</number:date-style><number:time-style style:name="N3"><number:hours number:style="long"/>'
        '<number:text>:</number:text><number:minutes number:style="long"/></number:time-style>'
        '<style:style style:name="share" style:family="table-cell" style:data-style-name="N1"/>'
        '<style:style style:name="day" style:family="table-cell" style:data-style-name="N2"/>'
        '<style:style style:name="clock" style:family="table-cell" style:data-style-name="N3"/>'
        '<style:style style:name="bold" style:family="text"><style:text-properties fo:font-weight="bold"/></style:style>'
        '</office:automatic-styles><office:body><office:spreadsheet>' + table.format(name="Cities", style="") +
        '<table:named-expressions><table:named-range table:name="Whole" table:base-cell-address="$Cities.$A$1" '
        'table:cell-range-address="$Cities.$A$1:.$C$5"/></table:named-expressions>'
        '</office:spreadsheet></office:body></office:document>')
    with tempfile.TemporaryDirectory() as work:
        source = os.path.join(work, "libreoffice.fods")
        with open(source, "w", encoding="utf-8") as file:
            file.write(document)
        for kind in ("xlsx", "ods", "xls"):
            subprocess.run(["soffice", "-env:UserInstallation=file://" + work + "/profile", "--headless",
                            "--convert-to", kind, "--outdir", work, source], check=True, stdout=subprocess.DEVNULL)
            shutil.copy(os.path.join(work, "libreoffice." + kind), folder)


with_xlsxwriter(os.path.join(HERE, "xlsxwriter.xlsx"), False)
with_xlsxwriter(os.path.join(HERE, "xlsxwriter-1904.xlsx"), True)
with_openpyxl(os.path.join(HERE, "openpyxl.xlsx"))
with_libreoffice(HERE)
