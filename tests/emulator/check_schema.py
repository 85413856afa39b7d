#!/usr/bin/env python3
"""Checks that the schema of scenarios, the examples, the generator and the loader agree.

Usage: check_schema.py EMULATOR_FOLDER KESTO_SWITCH_PROGRAM

The schema must accept every example and generated switch, as the loader does. Then every member that the
schema knows is tried on the loader: each value of an example is replaced by one that the schema refuses, and
each object gets a member that the schema does not know; the loader must refuse those too.
"""
import copy
import json
import os
import pathlib
import subprocess
import sys
import tempfile

import jsonschema

folder, program = pathlib.Path(sys.argv[1]), sys.argv[2]
schema = json.loads((folder / "switch.schema.json").read_text())
jsonschema.Draft202012Validator.check_schema(schema)
validator = jsonschema.Draft202012Validator(schema)
failures = []


def loader_accepts(scenario):
    with tempfile.NamedTemporaryFile("w", suffix=".json", delete=False) as file:
        json.dump(scenario, file)
    result = subprocess.run([program, "check", file.name], capture_output=True, text=True, check=False)
    os.unlink(file.name)
    return result.returncode == 0, result.stderr.strip()


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


def check_both(scenario, what):
    """The loader must refuse what the schema refuses. Returns whether the schema accepts."""
    accepted = validator.is_valid(scenario)
    loaded, complaint = loader_accepts(scenario)
    if loaded and not accepted:
        failures.append(f"{what}: the schema refuses it, the loader accepts it")
    return accepted, loaded, complaint


examples = sorted((folder / "examples").glob("*.json"))
if len(examples) < 2:
    failures.append("there are fewer than two examples")
generated = subprocess.run([program, "generate", "--tunnels", "7"], capture_output=True, text=True, check=True)
scenarios = {path.name: json.loads(path.read_text()) for path in examples}
scenarios["generated"] = json.loads(generated.stdout)
for name, scenario in scenarios.items():
    for error in validator.iter_errors(scenario):
        failures.append(f"{name}: {error.json_path}: {error.message}")
    loaded, complaint = loader_accepts(scenario)
    if not loaded:
        failures.append(f"{name}: {complaint}")

small = scenarios["one-tunnel-with-faults.json"]
refused = 0
for path in places(small):
    where = "/" + "/".join(map(str, path))
    if path:
        for replacement in (None, -2147483649, 1.5, {"unknown": 0}, [[]]):
            accepted, _, _ = check_both(replaced(small, path, replacement), f"{where} = {replacement}")
            refused += not accepted
    if isinstance(at(small, path), dict):
        changed = copy.deepcopy(small)
        at(changed, path)["unknown"] = 1
        accepted, _, _ = check_both(changed, f"{where}/unknown")
        if accepted:
            failures.append(f"the schema accepts an unknown member at {where}")
if refused < 100:
    failures.append(f"only {refused} changes were refused: the check does not check")

# Every member of the schema reaches the loader, which knows it: an object that has it with a wrong value is
# refused for that value and not for the member.
OBJECTS = {
    "scenario": (), "system": ("system",), "ip": ("ip",), "vsan": ("vsans", 0), "domain": ("vsans", 0, "domain"),
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
for name, path in OBJECTS.items():
    for member in definitions[name]["properties"]:
        changed = copy.deepcopy(small)
        at(changed, path)[member] = None
        loaded, complaint = loader_accepts(changed)
        if loaded or "is not a member" in complaint:
            failures.append(f"{name}.{member}: {complaint or 'the loader does not read it'}")

for failure in failures:
    print(failure)
print(f"{len(scenarios)} scenarios, {refused} changes that the schema refuses")
sys.exit(1 if failures else 0)
