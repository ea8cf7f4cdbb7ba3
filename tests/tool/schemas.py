#!/usr/bin/env python3
"""Every JSON that the command writes is valid against its schema in tools/cmsdp/schemas, and the command reads a
local file exactly when the schema allows it.

    schemas.py CMSDP
"""
import json
import pathlib
import subprocess
import sys
import tempfile
import warnings

import jsonschema

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCHEMAS = {path.name: json.loads(path.read_text(encoding="utf-8"))
           for path in sorted((ROOT / "tools" / "cmsdp" / "schemas").glob("*.schema.json"))}
CAPTURES = sorted((ROOT / "tests" / "corpus" / "captures").glob("*.sdp"))
CMSDP = sys.argv[1]
# Newer releases of jsonschema have another way of finding a schema by its name.
warnings.simplefilter("ignore", DeprecationWarning)
PARTS = {"report.schema.json", "streams.schema.json"}

# Changes of one member of the local file, and whether a file with it is read.
LOCAL_FILES = [
    ({}, True),
    ({"served_sections": 0}, True),
    ({"served_sections": 4294967295}, True),
    ({"served_sections": 4294967296}, False),
    ({"served_sections": -1}, False),
    ({"served_sections": 1.5}, False),
    ({"srtp": "required"}, True),
    ({"srtp": "wanted"}, False),
    ({"srtp": 1}, False),
    ({"default_address": 7}, False),
    ({"default_address": "2001:db8::7"}, True),
    ({"max_bandwidth_bit_per_s": 2147483648}, False),
    ({"max_bandwidth_bit_per_s": -5}, True),
    ({"floor_control": {"enabled": "auto"}}, True),
    ({"floor_control": {"enabled": "on"}}, False),
    ({"audio": {"codecs": ["G722"], "priority": ["G722"]}}, True),
    ({"audio": {"codecs": ["OPUS"]}}, False),
    ({"audio": {"codecs": "G722"}}, False),
    ({"audio": {"suite": "AES_CM_128_HMAC_SHA1_80"}}, True),
    ({"audio": {"suite": "AES"}}, False),
    ({"audio": {"key": "d0RmdmcmVCspeEc3QGZiNWpVLFJhQX1cfHAwJSoj"}}, True),
    ({"audio": {"key": "short"}}, False),
    ({"audio": {"key": None}}, True),
    ({"video": {"muted": "yes"}}, False),
    ({"video": {"main": {"role": "slides"}}}, False),
    ({"video": {"main": {"level": "9.9"}}}, True),
    ({"video": {"main": {"far_end": {"address": "192.0.2.4"}}}}, True),
    ({"unheard_of": 1}, False),
    ({"schema": "cmsdp.capabilities/1"}, True),
    ({"schema": "cmsdp.capabilities/9"}, False),
]


def validator(name):
    schema = SCHEMAS[name]
    jsonschema.Draft202012Validator.check_schema(schema)
    resolver = jsonschema.RefResolver(base_uri="", referrer=schema, store=SCHEMAS)
    return jsonschema.Draft202012Validator(schema, resolver=resolver)


VALIDATORS = {name: validator(name) for name in SCHEMAS}
problems = []
seen = set()


def validate(text, what):
    """The schema that a text names is the one that it is valid against."""
    document = json.loads(text)
    name = document.get("schema", "").removeprefix("cmsdp.").partition("/")[0] + ".schema.json"
    if name not in VALIDATORS:
        problems.append(f"{what}: there is no schema {name}")
        return
    seen.add(name)
    for error in VALIDATORS[name].iter_errors(document):
        place = "/".join(str(step) for step in error.absolute_path)
        problems.append(f"{what}: {place}: {error.message[:200]}")


def run(*arguments):
    return subprocess.run([CMSDP, *map(str, arguments)], capture_output=True, text=True, check=False).stdout


def outputs(scratch):
    yield "capabilities", run("capabilities")
    yield "offer --fit", run("offer", "--fit", "--json")
    yield "call", run("call", "--json", "--then", "present", "--then", "hold")
    secure = scratch / "secure.json"
    secure.write_text('{"srtp": true}', encoding="utf-8")
    nobody = scratch / "nobody.json"
    nobody.write_text('{"default_address": ""}', encoding="utf-8")
    yield "offer --fit, no address", run("offer", "--fit", "--json", "--local", nobody)
    yield "call, secure", run("call", "--json", "--offerer", secure, "--answerer", secure, "--show-secrets")
    folder = scratch / "call"
    folder.mkdir()
    for number, capture in enumerate(CAPTURES[:4]):
        (folder / f"{number}-{'answer' if number % 2 else 'offer'}.sdp").write_bytes(capture.read_bytes())
    yield "explain of a call", run("explain", "--json", "--lines", folder)
    survey = run("survey", "--json", CAPTURES[0].parent, CAPTURES[0].parent.parent / "README.md")
    for number, line in enumerate(survey.splitlines()):
        yield f"survey line {number + 1}", line
    for capture in CAPTURES:
        for local in ([], ["--local", secure]):
            yield f"inspect {capture.name}", run("inspect", "--json", *local, capture)
            yield f"answer {capture.name}", run("answer", "--json", *local, capture)
            yield f"answer --fit {capture.name}", run("answer", "--fit", "--json", *local, capture)
        yield f"explain {capture.name}", run("explain", "--json", "--lines", capture)
        yield f"check {capture.name}", run("check", "--json", CAPTURES[0], capture)


def check_local_files(scratch):
    local = scratch / "local.json"
    for members, is_read in LOCAL_FILES:
        local.write_text(json.dumps(members), encoding="utf-8")
        reads = subprocess.run([CMSDP, "offer", "--local", str(local)], capture_output=True, check=False).returncode == 0
        allows = VALIDATORS["capabilities.schema.json"].is_valid(members)
        if (reads, allows) != (is_read, is_read):
            problems.append(f"local file {members}: the command reads it: {reads}, the schema allows it: {allows}")


with tempfile.TemporaryDirectory() as name:
    for what, text in outputs(pathlib.Path(name)):
        if text:
            validate(text, what)
    check_local_files(pathlib.Path(name))

for name in sorted(set(SCHEMAS) - PARTS - seen):
    problems.append(f"{name}: no output was valid against it")
for problem in problems[:40]:
    print(problem)
print(f"schemas: {len(SCHEMAS)} files, {len(problems)} problems")
sys.exit(1 if problems else 0)
