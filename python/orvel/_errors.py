"""What a routine has to say: warnings and exceptions."""

SEVERITIES = (None, "NOTE", "ALERT", "WARNING", "FATAL", "TERMINAL", "WARNING", "FATAL")


class _Message:
    """severity: NOTE, ALERT, WARNING, FATAL or TERMINAL; code: the number of the error in the routine's list; routine:
    its name; text: the message; result: what the routine had computed, or None."""

    def __init__(self, severity, code, routine, text, result=None):
        super().__init__(severity, code, routine, text)
        self.severity, self.code, self.routine, self.text, self.result = severity, code, routine, text, result

    def __str__(self):
        return f"{self.severity} error {self.code} from {self.routine}. {self.text}"

    def __reduce__(self):
        return type(self), (self.severity, self.code, self.routine, self.text, self.result)


class Error(_Message, Exception):
    """An error that a routine has posted."""


class FatalError(Error):
    """The result is not what was asked for; `result` has what there is of it."""


class TerminalError(Error):
    """The arguments are such that nothing could be computed."""


class Warning(_Message, UserWarning):
    """The result is usable but doubtful. `result` has it for those who make an exception of the warning."""


class Alert(Warning):
    """The result may not be what was expected, as where it underflows."""


for _kind in (Error, FatalError, TerminalError, Warning, Alert):
    _kind.__module__ = "orvel"  # where users find them


def raise_or_warn(outcome, result, stacklevel):
    """Turns what was posted into an exception, a warning or, for a NOTE, an entry of the log that is called orvel."""
    severity = SEVERITIES[outcome[0]]
    kind = {"FATAL": FatalError, "TERMINAL": TerminalError, "WARNING": Warning, "ALERT": Alert}.get(severity)
    if kind is None:
        import logging  # seldom needed, and slow to load

        logging.getLogger("orvel").info("%s", Warning(severity, *outcome[1:]))
        return
    message = kind(severity, *outcome[1:])
    if severity != "TERMINAL":
        message.result = result
    try:
        if issubclass(kind, Error):
            raise message
        import warnings

        warnings.warn(message, stacklevel=stacklevel + 1)
    finally:
        del message, result  # a message that is raised refers to this frame
