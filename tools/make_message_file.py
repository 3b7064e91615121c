#!/usr/bin/env python3
# tools/make_message_file.py - write the message file of S_ERROR_POST and D_ERROR_POST from a text file
#
#   python3 tools/make_message_file.py messages.txt directory
#
# Each line of the text file is a number from 1 on, a blank and the template of that message; lines that start with #
# and empty lines are left out. The result, messages.daf in the directory, consists of records of 1024 characters,
# blank-padded and without separators; record n holds message n, and a blank record stands for a message that does not
# exist. Set TAL_F90_MSG to the directory.
import pathlib
import sys

RECORD = 1024


def read_messages(path):
    messages = {}
    for line_number, line in enumerate(pathlib.Path(path).read_text(encoding="ascii").splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        number, _, template = line.partition(" ")
        place = f"{path}:{line_number}"
        if not number.isdigit() or int(number) < 1:
            sys.exit(f"{place}: a line starts with the number of its message")
        if int(number) in messages:
            sys.exit(f"{place}: message {number} stands twice")
        if not 0 < len(template.strip()) <= RECORD:
            sys.exit(f"{place}: a template has 1 to {RECORD} characters")
        messages[int(number)] = template
    return messages


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: make_message_file.py messages.txt directory")
    messages = read_messages(sys.argv[1])
    with open(pathlib.Path(sys.argv[2]) / "messages.daf", "wb") as file:
        for number in range(1, max(messages, default=0) + 1):
            file.write(messages.get(number, "").ljust(RECORD).encode("ascii"))


main()
