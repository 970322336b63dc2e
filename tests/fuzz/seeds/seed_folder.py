"""Where a target's seeds go: the folder of its name beside this file."""
from pathlib import Path

LONGEST = 1024  # the replay runs every beginning of a seed


def write_seeds(target, seeds, longest=LONGEST):
    """Writes each of `seeds`, a mapping of names to bytes, and removes what is none of them."""
    folder = Path(__file__).parent / target
    folder.mkdir(exist_ok=True)
    for old in folder.iterdir():
        if old.name not in seeds:
            old.unlink()
    for name, content in seeds.items():
        assert len(content) < longest, name
        (folder / name).write_bytes(content)
