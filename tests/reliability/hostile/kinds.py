"""The kinds of hostile engines: a stage, which is a call of the engine, and what the engine does or answers there."""

# The process does not outlive these.
ENDINGS = ["exit", "exit-3", "_exit", "quick_exit", "abort", "segv", "null-call", "ill", "fpe", "stack", "throw",
           "throw-int", "terminate", "kill", "term", "alarm", "double-free", "end-thread", "thread-exit", "thread-_exit",
           "thread-segv", "thread-stack", "thread-throw"]
# These do not come back.
HANGS = ["hang", "hang-masked", "hang-thread", "stop"]
# The run goes on, and its results are the usual ones.
GOING_ON = ["close-itself", "close-files", "change-folder", "round-up", "forget-signals", "ignore-signals",
            "leave-thread", "noise"]

STAGES = ["load", "version", "init", "gain", "index", "count", "name", "type", "get", "get-array", "set", "receive",
          "block", "location", "noise-start", "noise-results", "unload"]

TEXTS = ["null", "empty", "controls", "bytes", "long", "path"]
NUMBERS = ["zero", "negative", "lowest", "highest"]
ANSWERS = {
    "version": TEXTS, "name": [*TEXTS, "same"], "help": TEXTS, "label": TEXTS,
    "location": NUMBERS, "noise-running": NUMBERS, "index": NUMBERS, "type": NUMBERS, "access": NUMBERS,
    "level": NUMBERS, "get-enum": NUMBERS, "get-bypass": NUMBERS,
    "count": [*NUMBERS, "million"], "length": [*NUMBERS, "million"],
    "get": ["nan"], "get-array": ["nan", "null"], "set": ["nothing"], "block": ["nothing", "loud"],
    "noise-results": ["nan", "null"],
}


def kinds():
    """(stage, deed) in a fixed order."""
    for stage in STAGES:
        yield from ((stage, deed) for deed in [*ENDINGS, *HANGS])
    for stage in ["block", "init"]:
        yield stage, "spin"
    for stage in ["load", "init", "get", "block"]:
        yield from ((stage, deed) for deed in [*GOING_ON, "close-output"])
    for stage, answers in ANSWERS.items():
        yield from ((stage, answer) for answer in answers)
