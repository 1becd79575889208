# ZUNA_PYTHON, the Python interpreter. The system's own comes first: it is the one with the system's packages.
find_program(ZUNA_PYTHON NAMES python3 PATHS /usr/bin NO_DEFAULT_PATH)
find_program(ZUNA_PYTHON NAMES python3 REQUIRED)
