"""Writes the code blocks of a Markdown file to the files of one project.

usage: readme_snippets.py MARKDOWN DIRECTORY
"""

import re
import sys
from pathlib import Path

# For each language, the files for its code blocks, in order.
FILES = {
    "sh": ["pkg_config.sh"],
    "cmake": ["CMakeLists.txt", "fetch_content.cmake"],
    "cpp": ["camera_test.cpp"],
    "c": ["camera_test.c"],
}


def main(markdown: Path, directory: Path) -> None:
    blocks = re.findall(r"^```(\w+)\n(.*?)^```$", markdown.read_text(encoding="utf-8"), re.DOTALL | re.MULTILINE)
    directory.mkdir()
    for language in {language for language, _ in blocks} | set(FILES):
        codes = [text for block_language, text in blocks if block_language == language]
        files = FILES.get(language, [])
        if len(codes) != len(files):
            sys.exit(f"{markdown}: expected {len(files)} blocks of {language}, found {len(codes)}")
        for file, code in zip(files, codes):
            (directory / file).write_text(code, encoding="utf-8")


main(Path(sys.argv[1]), Path(sys.argv[2]))
