"""wbemcli, the command line in C."""

import subprocess

import pytest
from served_switch import NAMESPACE, NOT_FOUND_BY_NAME

ENDPOINT = "KESTO_FCIPProtocolEndPoint"
BETWEEN = "KESTO_FCIPElementSettingData"


class CommandLine:
    """wbemcli with the server's address in front of the paths that it is given."""

    def __init__(self, server, credentials=None, options=None):
        credentials = credentials or server.credentials
        user = ":".join(credentials) + "@" if credentials else ""
        self._prefix = f"{server.scheme}://{user}"
        self._host = server.host
        self._options = options
        if options is None:
            self._options = ["-cacert", server.authority.certificate] if server.authority else []

    def run(self, operation, path, *rest, options=()):
        command = ["wbemcli", operation, "-nl", *self._options, *options, self._prefix + path, *rest]
        return subprocess.run(command, text=True, capture_output=True, check=False, timeout=60)

    def __call__(self, operation, path, *rest, options=()):
        """Operates on a path as wbemcli prints them: HOST:PORT/NAMESPACE:CLASS.KEYS"""
        result = self.run(operation, path, *rest, options=options)
        assert result.returncode == 0 and not result.stdout.startswith("*"), \
            f"{path}: {result.stderr}{result.stdout}"
        return result.stdout.strip().splitlines()

    def path(self, rest, namespace=NAMESPACE):
        return f"{self._host}/{namespace}:{rest}"


@pytest.fixture
def wbemcli(server):
    return CommandLine(server)


def test_what_is_enumerated_can_be_got(wbemcli):
    paths = wbemcli("ein", wbemcli.path(ENDPOINT))
    assert len(paths) == 5
    for path in paths:
        got = wbemcli("gi", path)
        assert got[0] == path
        assert any(line.startswith("-TunnelID=") for line in got)


@pytest.mark.parametrize("operation", ["ain", "rin"])
def test_what_a_traversal_prints_can_be_got(wbemcli, operation):
    for class_name in (ENDPOINT, "KESTO_TCPProtocolEndPoint", "KESTO_IPProtocolEndPoint"):
        for source in wbemcli("ein", wbemcli.path(class_name)):
            paths = wbemcli(operation, source)
            assert paths
            for path in paths:
                class_of_path = path.partition(f"/{NAMESPACE}:")[2].partition(".")[0]
                if class_of_path.lower() not in NOT_FOUND_BY_NAME:
                    assert wbemcli("gi", path)[1:], path


def test_instances_of_a_traversal_are_printed(wbemcli):
    [tunnel, *_] = wbemcli("ein", wbemcli.path(ENDPOINT))
    assert any(line.startswith("-InstanceID=") for line in wbemcli("ai", tunnel, options=["-ac", BETWEEN]))
    assert any(line.startswith("-SettingData=") for line in wbemcli("ri", tunnel, options=["-arc", BETWEEN]))


def test_classes_are_listed_and_printed(wbemcli):
    names = wbemcli("ecn", wbemcli.path("CIM_ProtocolEndpoint"))
    assert any(name.endswith(f":{ENDPOINT}") for name in names)
    assert any("TunnelID" in line for line in wbemcli("gc", wbemcli.path(ENDPOINT)))
    assert any("TunnelID" in line for line in wbemcli("ec", wbemcli.path("CIM_ProtocolEndpoint")))


def test_a_single_property_is_got(wbemcli):
    [tunnel, *_] = wbemcli("ein", wbemcli.path(ENDPOINT))
    assert wbemcli("gp", f"{tunnel}", "TunnelID")


@pytest.mark.parametrize("namespace, class_name, error", [
    (NAMESPACE, "KESTO_NoSuchClass", "CIM_ERR_INVALID_CLASS"),
    ("root/nowhere", ENDPOINT, "CIM_ERR_INVALID_NAMESPACE"),
])
def test_a_mistake_is_reported_with_the_servers_error(wbemcli, namespace, class_name, error):
    result = wbemcli.run("ei", wbemcli.path(class_name, namespace))
    assert error in result.stdout + result.stderr


def test_a_wrong_password_is_reported(https_server):
    wbemcli = CommandLine(https_server, credentials=("operator", "wrong"))
    result = wbemcli.run("ein", wbemcli.path(ENDPOINT))
    assert "Invalid username/password" in result.stderr
    assert ENDPOINT not in result.stdout


def test_a_certificate_of_an_unknown_authority_is_refused(https_server):
    wbemcli = CommandLine(https_server, options=[])
    result = wbemcli.run("ein", wbemcli.path(ENDPOINT))
    assert result.returncode != 0
    assert ENDPOINT not in result.stdout


def test_a_client_may_do_without_verification(https_server):
    wbemcli = CommandLine(https_server, options=["-noverify"])
    assert wbemcli("ein", wbemcli.path(ENDPOINT))
