"""Writes the code blocks of a Markdown file to the files of one project.

usage: readme_snippets.py MARKDOWN DIRECTORY
"""

import re
import sys
from pathlib import Path

FILE_OF_LANGUAGE = {"cmake": "CMakeLists.txt", "cpp": "camera_test.cpp", "c": "camera_test.c"}


def main(markdown: Path, directory: Path) -> None:
    blocks = re.findall(r"^```(\w+)\n(.*?)^```$", markdown.read_text(encoding="utf-8"), re.DOTALL | re.MULTILINE)
    directory.mkdir()
    for language, file in FILE_OF_LANGUAGE.items():
        code = [text for block_language, text in blocks if block_language == language]
        if len(code) != 1:
            sys.exit(f"{markdown}: expected one block of {language}, found {len(code)}")
        (directory / file).write_text(code[0], encoding="utf-8")


main(Path(sys.argv[1]), Path(sys.argv[2]))
