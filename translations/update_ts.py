#!/usr/bin/env python3
"""Refresh the two .ts files from the sources and fill in the translations.

Run after changing user-visible texts:  python3 translations/update_ts.py
- lupdate collects every tr() text of src/, tools/glyphforge/ and tools/serialstamp/ into Translate_CN.ts / Translate_EN.ts;
- Chinese texts come from translations/zh/*.tsv (English<TAB>Chinese, one pair
  a line; "\\n" stands for a line feed), matched by the English text;
- the English file translates every text to itself.
The build only compiles the .ts files; this script is for developers.
"""
import glob
import os
import subprocess
import sys
import xml.etree.ElementTree as ET

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(HERE)
LUPDATE = "/usr/lib/qt5/bin/lupdate"


def load_pairs():
    pairs = {}
    for path in sorted(glob.glob(os.path.join(HERE, "zh", "*.tsv"))):
        with open(path, encoding="utf-8") as f:
            for n, line in enumerate(f, 1):
                line = line.rstrip("\n")
                if not line or line.startswith("#"):
                    continue
                if "\t" not in line:
                    sys.exit(f"{path}:{n}: no tab")
                en, zh = line.split("\t", 1)
                pairs[en.replace("\\n", "\n")] = zh.replace("\\n", "\n")
    return pairs


def fill(ts_path, lang, translate):
    tree = ET.parse(ts_path)
    tree.getroot().set("language", lang)
    tree.getroot().set("sourcelanguage", "en_US")
    missing = []
    for msg in tree.iter("message"):
        src = msg.find("source").text or ""
        tr = msg.find("translation")
        if msg.find("translation").get("type") in ("obsolete", "vanished"):
            continue
        value = translate(src)
        if value is None:
            missing.append(src)
            tr.text = None
            tr.set("type", "unfinished")
        else:
            tr.text = value
            tr.attrib.pop("type", None)
    tree.write(ts_path, encoding="utf-8", xml_declaration=True)
    return missing


def main():
    sources = [os.path.join(ROOT, "src"), os.path.join(ROOT, "tools", "glyphforge"),
               os.path.join(ROOT, "tools", "serialstamp")]
    for name, lang in (("Translate_CN.ts", "zh_CN"), ("Translate_EN.ts", "en_US")):
        ts = os.path.join(HERE, name)
        subprocess.run([LUPDATE, "-no-obsolete", "-locations", "none", "-source-language", "en_US",
                        "-target-language", lang, *sources, "-ts", ts],
                       check=True, stdout=subprocess.DEVNULL)
    pairs = load_pairs()
    missing = fill(os.path.join(HERE, "Translate_CN.ts"), "zh_CN", pairs.get)
    fill(os.path.join(HERE, "Translate_EN.ts"), "en_US", lambda s: s)
    for m in missing:
        print("no Chinese for:", repr(m))
    return 1 if missing else 0


if __name__ == "__main__":
    sys.exit(main())
