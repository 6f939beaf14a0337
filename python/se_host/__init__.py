"""Echo cancelling, noise reduction and beam forming of a microphone array: libse_host from Python.

    import se_host

    with se_host.Host(tuning="gentle.json") as host:
        mono = host.process(captured, far_end)     # (frames, channels) and (frames,), 16 kHz, int16 or float32
        host["seout_gain_q10"] = 900

Needs the library libse_host.so.0 and nothing else; numpy arrays are taken and given back when the caller uses them.
The library is looked for in the environment variable SE_HOST_LIBRARY (a path), beside this package, and then where the
system keeps its libraries. The engine's log goes to the logger "se_host" of the module logging.
"""

from .errors import (ArgumentError, EngineError, Error, FailedError, FileError, InUseError, LibraryError,
                     QueueFullError, RefusedError, Status, TuningWarning, UnknownSettingError)
from .health import Health
from .host import BLOCK, SAMPLE_RATE, Host
from .settings import Setting, Value

__version__ = "0.1.0"

__all__ = [
    "BLOCK", "SAMPLE_RATE", "Host", "Health", "Setting", "Value", "Status", "Error", "ArgumentError", "EngineError",
    "FailedError", "FileError", "InUseError", "LibraryError", "QueueFullError", "RefusedError", "TuningWarning",
    "UnknownSettingError",
]
