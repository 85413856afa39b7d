#!/usr/bin/env python3
"""Checks that the schema of scenarios, the examples, the generator and the loader agree.

Usage: check_schema.py EMULATOR_FOLDER KESTO_SWITCH_PROGRAM SCENARIO_MEMBERS_PROGRAM

The schema must list the members that the loader accepts, object by object, and it must accept every example
and generated switch, as the loader does. Then every member that the schema lists is tried on the loader: each
value of an example is replaced by one that the schema refuses, and each object gets a member that the schema
does not list; the loader must refuse those too.
"""
import copy
import json
import os
import pathlib
import subprocess
import sys
import tempfile

import jsonschema

folder, program, members_program = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3]
schema = json.loads((folder / "switch.schema.json").read_text())
jsonschema.Draft202012Validator.check_schema(schema)
validator = jsonschema.Draft202012Validator(schema)
failures = []


def loader_verdicts(candidates):
    """The loader's complaint about each scenario; None if it accepts it."""
    with tempfile.TemporaryDirectory() as folder_of_candidates:
        files = [os.path.join(folder_of_candidates, f"{number}.json") for number in range(len(candidates))]
        for file, scenario in zip(files, candidates):
            pathlib.Path(file).write_text(json.dumps(scenario))
        result = subprocess.run([program, "check", *files], capture_output=True, text=True, check=False)
    good = {line.removesuffix(": good") for line in result.stdout.splitlines()}
    complaints = dict(line.split(": ", 1) for line in result.stderr.splitlines())
    if good | complaints.keys() != set(files) or (result.returncode == 0) != (not complaints):
        sys.exit(f"the loader does not mention every scenario:\n{result.stdout}{result.stderr}")
    return [complaints.get(file) for file in files]


def places(value, path=()):
    """Every place in a JSON value."""
    yield path
    if isinstance(value, dict):
        for name, inner in value.items():
            yield from places(inner, path + (name,))
    elif isinstance(value, list):
        for index, inner in enumerate(value):
            yield from places(inner, path + (index,))


def at(value, path):
    for step in path:
        value = value[step]
    return value


def replaced(scenario, path, replacement):
    changed = copy.deepcopy(scenario)
    at(changed, path[:-1])[path[-1]] = replacement
    return changed


printed = subprocess.run([members_program], capture_output=True, text=True, check=True).stdout.splitlines()
accepted_members = {tuple(line.split(" ")) for line in printed}
listed_members = {(name, member) for name, definition in schema["$defs"].items()
                  for member in definition.get("properties", ())}
if len(accepted_members) != len(printed):
    failures.append("the loader has a member twice")
for name, member in sorted(accepted_members ^ listed_members):
    only = "loader" if (name, member) in accepted_members else "schema"
    failures.append(f"{name}.{member}: known to the {only} only")

examples = sorted((folder / "examples").glob("*.json"))
if len(examples) < 2:
    failures.append("there are fewer than two examples")
generated = subprocess.run([program, "generate", "--tunnels", "7"], capture_output=True, text=True,
                           check=True)
scenarios = {path.name: json.loads(path.read_text()) for path in examples}
scenarios["generated"] = json.loads(generated.stdout)
for (name, scenario), complaint in zip(scenarios.items(), loader_verdicts(list(scenarios.values()))):
    for error in validator.iter_errors(scenario):
        failures.append(f"{name}: {error.json_path}: {error.message}")
    if complaint is not None:
        failures.append(f"{name}: {complaint}")

small = scenarios["one-tunnel-with-faults.json"]
changes = {}
for path in places(small):
    where = "/" + "/".join(map(str, path))
    if path:
        for replacement in (None, -2147483649, 1.5, {"unknown": 0}, [[]]):
            changes[f"{where} = {replacement}"] = replaced(small, path, replacement)
    if isinstance(at(small, path), dict):
        changes[f"{where}/unknown = 1"] = copy.deepcopy(small)
        at(changes[f"{where}/unknown = 1"], path)["unknown"] = 1
refused = 0
for (what, scenario), complaint in zip(changes.items(), loader_verdicts(list(changes.values()))):
    accepted = validator.is_valid(scenario)
    refused += not accepted
    if not accepted and complaint is None:
        failures.append(f"{what}: the schema refuses it, the loader accepts it")
    if accepted and what.endswith("/unknown = 1"):
        failures.append(f"{what}: the schema accepts an unknown member")
if refused < 100:
    failures.append(f"only {refused} changes were refused: the check does not check")

# The loader reads every member of the schema: an object that has the member with a wrong value is refused for
# that value and not for the member.
OBJECTS = {
    "scenario": (), "system": ("system",), "ip": ("ip",), "vsan": ("vsans", 0),
    "domain": ("vsans", 0, "domain"),
    "port": ("ports", 0), "portCounters": ("ports", 0, "counters"), "ipStats": ("ports", 0, "ipStats"),
    "ethernetStats": ("ports", 0, "ethernetStats"), "tcpStats": ("ports", 0, "tcpStats"),
    "profile": ("profiles", 0), "tunnel": ("tunnels", 0), "linkErrors": ("tunnels", 0, "errors"),
    "tcpConnection": ("tunnels", 0, "tcpConnections", 0), "fault": ("faults", 3),
    "linkKey": ("faults", 3, "removeTunnel"), "movingCounter": ("ports", 0, "counters", "inBytes"),
}
definitions = schema["$defs"]
closed = {name for name, definition in definitions.items() if definition.get("additionalProperties") is False}
if closed != set(OBJECTS):
    failures.append(f"objects of the schema that are not tried: {sorted(closed ^ set(OBJECTS))}")
wrong = {}
for name, path in OBJECTS.items():
    for member in definitions[name]["properties"]:
        wrong[f"{name}.{member}"] = copy.deepcopy(small)
        at(wrong[f"{name}.{member}"], path)[member] = None
for what, complaint in zip(wrong, loader_verdicts(list(wrong.values()))):
    if complaint is None or "is not a member" in complaint:
        failures.append(f"{what}: {complaint or 'the loader does not read it'}")

for failure in failures:
    print(failure)
print(f"{len(scenarios)} scenarios, {refused} changes that the schema refuses, {len(wrong)} members")
sys.exit(1 if failures else 0)
