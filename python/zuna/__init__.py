"""Shows and logs of a live-music playback product, of every version: read, convert, compare, check, write.

    import zuna
    show = zuna.open("three-tunes.showdata", key_file="three-tunes.key")
    show.up().save("new.showdata")

docs/python.md has more examples.
"""

from . import format_converter
from ._zuna import (
    BarLabel, Difference, Document, Error, FieldChange, Finding, Key, Meter, MidiReport, Page, Song, Tempo, Voice,
    from_midi, message_type, open)

__all__ = [
    "BarLabel", "Difference", "Document", "Error", "FieldChange", "Finding", "Key", "Meter", "MidiReport", "Page",
    "Song", "Tempo", "Voice", "format_converter", "from_midi", "message_type", "open"]

for name in __all__:
    if isinstance(globals()[name], type):
        globals()[name].__module__ = __name__  # and not that of the extension
del name
