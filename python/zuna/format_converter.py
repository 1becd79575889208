"""The entry points of libzuna_format_converter by their own names.

Those that end in _vector take and return encrypted bytes; the others take paths, replace the output, and return its
path. Errors are zuna.Error.
"""

from ._zuna.format_converter import (
    copy_attaccas_and_fermatas, copy_attaccas_and_fermatas_vector, logdata_converter, logdata_converter_vector,
    logdata_down, logdata_down_vector, logdata_up, logdata_up_vector, showdata_converter, showdata_converter_vector,
    showdata_down, showdata_down_vector, showdata_up)

__all__ = [
    "copy_attaccas_and_fermatas", "copy_attaccas_and_fermatas_vector", "logdata_converter", "logdata_converter_vector",
    "logdata_down", "logdata_down_vector", "logdata_up", "logdata_up_vector", "showdata_converter",
    "showdata_converter_vector", "showdata_down", "showdata_down_vector", "showdata_up"]
