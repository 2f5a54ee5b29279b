"""The Python of docs/start.md runs, and does what it asserts."""
import re
from pathlib import Path

PAGE = Path(__file__).resolve().parents[2] / "docs" / "start.md"


def test_start_page():
    text = PAGE.read_text()
    blocks = list(re.finditer(r"^```python\n(.*?)^```", text, re.M | re.S))
    assert len(blocks) > 5
    names = {}
    for block in blocks:
        # A failure has the line of the page.
        code = "\n" * text.count("\n", 0, block.start(1)) + block.group(1)
        exec(compile(code, str(PAGE), "exec"), names)
