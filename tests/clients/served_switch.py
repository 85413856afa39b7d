"""The CIM server with the provider on the emulated switch, and what a client needs to reach it."""

import dataclasses
import json
import os
import pathlib
import re
import signal
import subprocess
import time

import pywbem

BUILD = pathlib.Path(os.environ["KESTO_BUILD"])
PROJECT = pathlib.Path(__file__).resolve().parents[2]
SERVER = BUILD / "bin/kesto-cimserver"

NAMESPACE = "root/cimv2"
USER, PASSWORD = "operator", "only-for-tests"

# The registered classes, by what a client can ask of them.
CLASSES = re.findall(r"^(\w+) instance", (PROJECT / "packaging/classes.txt").read_text(), re.MULTILINE)
ASSOCIATIONS = re.findall(r"^(\w+) .*association$", (PROJECT / "packaging/classes.txt").read_text(),
                          re.MULTILINE)

# What a traversal leads to and no name leads back to: the switch's own objects, which the provider does not
# serve; two associations that only a traversal knows; and objects whose paths differ from their names.
NOT_FOUND_BY_NAME = {name.lower() for name in (
    "KESTO_EthernetPort", "KESTO_FCPort", "KESTO_LogicalComputerSystem", "KESTO_PhysicalComputerSystem",
    "KESTO_FCPortProtocolEndPoint", "KESTO_EthernetPortProtocolEndpoint",
    "KESTO_RemoteFCIPPort", "KESTO_TCPStatisticalData")}


def run(*command, **options):
    return subprocess.run(command, check=True, text=True, capture_output=True, **options).stdout


def still_switch(folder):
    """The built-in switch whose counters stand still, so that two answers can be compared."""
    scenario = json.loads(run(BUILD / "bin/kesto-switch", "builtin"))
    scenario["clock"] = 10
    file = folder / "still-switch.json"
    file.write_text(json.dumps(scenario))
    return file


@dataclasses.dataclass
class Authority:
    """A certificate authority that nobody but the tests knows."""

    folder: pathlib.Path
    name: str

    @property
    def certificate(self):
        return self.folder / f"{self.name}.pem"

    @property
    def key(self):
        return self.folder / f"{self.name}.key"

    def create(self):
        run("openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes",
            "-subj", f"/CN={self.name}", "-days", "2", "-keyout", self.key, "-out", self.certificate)
        return self

    def sign(self, host, alternative):
        """A certificate for the host with its key."""
        key, request, certificate, extensions = (self.folder / f"{host}.{end}"
                                                 for end in ("key", "csr", "pem", "ext"))
        extensions.write_text(f"subjectAltName={alternative}\n")
        run("openssl", "req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes",
            "-subj", f"/CN={host}", "-keyout", key, "-out", request)
        run("openssl", "x509", "-req", "-in", request, "-CA", self.certificate, "-CAkey", self.key,
            "-CAcreateserial", "-days", "2", "-extfile", extensions, "-out", certificate)
        return certificate, key


def add_user(file, user, password):
    run(BUILD / "bin/kesto-cimserver-user", file, user, input=password + "\n")


class ServedSwitch:
    """A running server. Takes the server's options, among them those of its ports."""

    def __init__(self, folder, name, *options):
        self._log = folder / f"{name}.log"
        self.authority = None
        self.credentials = None
        environment = os.environ | {"KESTO_SWITCH": str(still_switch(folder))}
        with self._log.open("w") as log:
            # setpriv lets the server end with the tests even when they crash.
            self._process = subprocess.Popen(
                ["setpriv", "--pdeathsig", "TERM", SERVER, "--provider", BUILD / "lib/libFCIPProvider.so",
                 "--provider-log", "/dev/null", *options],
                env=environment, stdout=log, stderr=subprocess.STDOUT)
        self.urls = self._wait_until_ready()

    def _wait_until_ready(self):
        deadline = time.monotonic() + 60
        while time.monotonic() < deadline:
            ended = self._process.poll() is not None
            if found := re.findall(r"((https?)://[0-9.]+:\d+)", self.output()):
                return {scheme: url for url, scheme in found}
            if ended:
                break
            time.sleep(0.02)
        self._process.kill()
        raise RuntimeError(f"the CIM server does not get ready:\n{self.output()}")

    def output(self):
        return self._log.read_text()

    def stop(self):
        """Stops it as an administrator does; it must have had nothing to complain about."""
        self._process.send_signal(signal.SIGTERM)
        status = self._process.wait(timeout=60)
        assert status == 0, self.output()
        assert "emulated switch:" not in self.output(), "the provider misused a platform service"

    @property
    def scheme(self):
        return "https" if "https" in self.urls else "http"

    @property
    def url(self):
        return self.urls[self.scheme]

    @property
    def host(self):
        return self.url.partition("://")[2]

    def connect(self, **options):
        """A connection of pywbem; the options take the place of the usual ones."""
        usual = {"creds": self.credentials, "ca_certs": self.authority and str(self.authority.certificate),
                 "default_namespace": NAMESPACE, "timeout": 20}
        return pywbem.WBEMConnection(self.url, **(usual | options))
