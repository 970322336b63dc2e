"""The result as people read it: Markdown, which is plain enough for a terminal."""

from .plausible import in_words


def road_table(sweep):
    yield f"### {sweep.road.title[0].upper()}{sweep.road.title[1:]} (`{sweep.road.name}`)"
    yield ""
    yield "| call | on the road | failures | faults injected | violations |"
    yield "|---|---:|---|---:|---:|"
    for name in sorted(sweep.calls):
        words = ", ".join(sorted(in_words(what) for what in sweep.failures[name]))
        yield (f"| `{name}` | {sweep.calls[name]} | {words or '–'} | {sweep.injected[name]} | "
               f"{sweep.violated[name]} |")
    yield (f"| **all** | {sum(sweep.calls.values())} | | {sum(sweep.injected.values())} | "
           f"{sum(sweep.violated.values())} |")
    yield ""
    yield (f"{sweep.claims} of these runs said that saving failed. {len(sweep.missed)} faults "
           f"were not reached. {sweep.seconds:.0f} s.")
    yield ""
    if sweep.allowed:
        yield "Not claimed, and by the rules not known to the program:"
        yield ""
        for allowance, count in sweep.allowed.most_common():
            calls = ", ".join(f"`{name}`" for name in sorted(allowance.calls))
            yield (f"- {count} × {', '.join(sorted(allowance.effects))} ({calls} on the "
                   f"{allowance.subject}). {allowance.reason}")
        yield ""
