#!/usr/bin/python3
"""Prints role, name and description of each accessible object of a program, one object a line, separated by tabs."""

import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402


def show(node):
    print(node.get_role_name(), node.get_name(), described(node), sep="\t")
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child:
            show(child)


def described(node):
    """The node's own description and the names of the nodes that describe it."""
    texts = [node.get_description() or ""]
    for relation in node.get_relation_set():
        if relation.get_relation_type() == Atspi.RelationType.DESCRIBED_BY:
            texts += [relation.get_target(i).get_name() for i in range(relation.get_n_targets())]
    return " ".join(text for text in texts if text)


desktop = Atspi.get_desktop(0)
for index in range(desktop.get_child_count()):
    application = desktop.get_child_at_index(index)
    if application and application.get_process_id() == int(sys.argv[1]):
        show(application)
