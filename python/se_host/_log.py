"""The log records of the process as records of the logger "se_host"."""

from __future__ import annotations

import logging

from ._layout import LogFunction
from ._library import decoded

_LEVELS = {1: logging.CRITICAL, 2: logging.ERROR, 3: logging.WARNING, 4: logging.INFO, 5: logging.DEBUG}
_logger = logging.getLogger("se_host")


def _to_logging(_context: object, level: int, tag: bytes, text: bytes) -> None:
    _logger.log(_LEVELS.get(level, logging.DEBUG), "%s: %s", decoded(tag), decoded(text))


# A record may still be on its way when the host is closed, so it lives as long as the module.
to_logging = LogFunction(_to_logging)
