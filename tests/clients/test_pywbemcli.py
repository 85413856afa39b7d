"""pywbemcli, the command line of pywbem."""

import re
import subprocess

import pytest
from served_switch import CLASSES, NAMESPACE

ENDPOINT = "KESTO_FCIPProtocolEndPoint"
SETTINGS = "KESTO_FCIPSettings"
BETWEEN = "KESTO_FCIPElementSettingData"


class CommandLine:
    """pywbemcli with the server's address and the user's name; output is plain text."""

    def __init__(self, server, folder):
        self._options = ["--server", server.url, "--default-namespace", NAMESPACE,
                         "--connections-file", folder / "connections.yaml"]
        if server.credentials:
            user, password = server.credentials
            self._options += ["--user", user, "--password", password]
        if server.authority:
            self._options += ["--ca-certs", server.authority.certificate]

    def run(self, *arguments, general=()):
        return subprocess.run(["pywbemcli", *self._options, *general, *arguments], text=True,
                              capture_output=True, check=False, timeout=60)

    def __call__(self, *arguments, general=()):
        result = self.run(*arguments, general=general)
        assert result.returncode == 0, f"{result.stderr}{result.stdout}"
        return result.stdout


@pytest.fixture
def pywbemcli(server, tmp_path):
    return CommandLine(server, tmp_path)


def lines(text):
    return [line for line in text.splitlines() if line]


def words(text):
    return set(re.findall(r"\w+", text))


def test_the_tree_shows_a_class_under_its_superclasses(pywbemcli):
    shown = pywbemcli("class", "tree")
    assert set(CLASSES) <= words(shown)
    below = pywbemcli("class", "tree", "CIM_ProtocolEndpoint")
    assert {ENDPOINT, "KESTO_TCPProtocolEndPoint", "KESTO_IPProtocolEndPoint"} <= words(below)
    assert SETTINGS not in words(below)
    above = pywbemcli("class", "tree", "--superclasses", ENDPOINT)
    assert {ENDPOINT, "CIM_ProtocolEndpoint", "CIM_ManagedElement"} <= words(above)


def test_classes_are_enumerated(pywbemcli):
    names = pywbemcli("class", "enumerate", "--names-only", "--deep-inheritance").split()
    assert set(CLASSES) <= set(names)
    declared = pywbemcli("class", "enumerate", "CIM_SettingData", "--deep-inheritance", general=["-o", "mof"])
    assert re.search(rf"^class {SETTINGS} : \w+ {{", declared, re.MULTILINE)


def test_a_class_is_shown_as_mof(pywbemcli):
    shown = pywbemcli("class", "get", ENDPOINT, general=["-o", "mof"])
    assert f"class {ENDPOINT} :" in shown
    assert re.search(r"uint16 TunnelID;", shown)


def test_classes_are_found_by_a_pattern(pywbemcli):
    found = words(pywbemcli("class", "find", "*Settings", "--namespace", NAMESPACE))
    assert {"KESTO_FCIPSettings", "KESTO_TCPSettings", "KESTO_IPSettings"} <= found
    assert ENDPOINT not in found


def test_the_associations_of_a_class_are_listed(pywbemcli):
    assert SETTINGS in words(pywbemcli("class", "associators", ENDPOINT, "--names-only"))
    assert BETWEEN in words(pywbemcli("class", "references", ENDPOINT, "--names-only"))


@pytest.mark.parametrize("general", [
    ["--use-pull", "yes", "--pull-max-cnt", "1"], ["--use-pull", "yes", "--pull-max-cnt", "2"],
    ["--use-pull", "yes"], ["--use-pull", "no"], ["--use-pull", "either"],
], ids=" ".join)
def test_instances_are_the_same_pulled_or_not(pywbemcli, connection, general):
    shown = pywbemcli("instance", "enumerate", ENDPOINT, general=[*general, "-o", "mof"])
    instances = connection.EnumerateInstances(ENDPOINT)
    assert shown.count(f"instance of {ENDPOINT} {{") == len(instances)
    for instance in instances:
        assert instance.tomof() in shown
    names = pywbemcli("instance", "enumerate", ENDPOINT, "--names-only", general=general)
    assert len(lines(names)) == len(instances)


def test_a_name_that_is_listed_can_be_got(pywbemcli):
    [first, *_] = lines(pywbemcli("instance", "enumerate", ENDPOINT, "--names-only"))
    assert f"instance of {ENDPOINT} {{" in pywbemcli("instance", "get", first, general=["-o", "mof"])


def test_an_instance_is_got_by_its_keys(pywbemcli, connection):
    [first, *_] = connection.EnumerateInstances(SETTINGS)
    shown = pywbemcli("instance", "get", SETTINGS, "--key", f"InstanceID={first['InstanceID']}",
                      general=["-o", "mof"])
    assert shown.strip() == first.tomof().strip()


def test_instances_are_counted(pywbemcli, connection):
    shown = pywbemcli("instance", "count", "KESTO_*", "--namespace", NAMESPACE, general=["-o", "plain"])
    counts = dict(re.findall(r"(KESTO_\w+)\s+(\d+)", shown))
    expected = {name: len(connection.EnumerateInstanceNames(name)) for name in CLASSES}
    assert counts == {name: str(count) for name, count in expected.items() if count}


def test_associated_instances_are_listed(pywbemcli, tunnel):
    source = str(tunnel)
    settings = pywbemcli("instance", "associators", source, "--assoc-class", BETWEEN, general=["-o", "mof"])
    assert f"instance of {SETTINGS} {{" in settings
    references = pywbemcli("instance", "references", source, "--result-class", BETWEEN, "--names-only")
    assert f":{BETWEEN}." in references


def test_the_shrub_of_a_tunnel_shows_what_it_is_associated_with(pywbemcli, connection, tunnel):
    shown = pywbemcli("instance", "shrub", str(tunnel))
    for path in connection.ReferenceNames(tunnel):
        assert path.classname in words(shown)
    for path in connection.AssociatorNames(tunnel):
        assert path.classname in words(shown)


def test_the_namespaces_are_listed(pywbemcli):
    interop = pywbemcli("namespace", "interop").split()[-1]
    assert {NAMESPACE, interop} <= set(pywbemcli("namespace", "list", general=["-o", "plain"]).split())


def test_qualifiers_are_enumerated(pywbemcli):
    declared = pywbemcli("qualifier", "enumerate", general=["-o", "mof"])
    assert {"Key", "Description", "ValueMap"} <= words(declared)
    assert "Qualifier Key : boolean" in pywbemcli("qualifier", "get", "Key", general=["-o", "mof"])


def test_the_server_describes_itself(pywbemcli):
    assert pywbemcli("server", "brand").strip()
    assert NAMESPACE in pywbemcli("server", "info")


def test_a_mistake_is_reported_with_the_servers_error(pywbemcli):
    for arguments, error in [(("instance", "enumerate", "KESTO_NoSuchClass"), "CIM_ERR_INVALID_CLASS"),
                             (("class", "get", "KESTO_NoSuchClass"), "CIM_ERR_NOT_FOUND"),
                             (("instance", "enumerate", ENDPOINT, "--namespace", "root/nowhere"),
                              "CIM_ERR_INVALID_NAMESPACE")]:
        result = pywbemcli.run(*arguments)
        assert result.returncode == 1
        assert error in result.stderr + result.stdout


def test_a_wrong_password_is_reported(https_server, tmp_path):
    pywbemcli = CommandLine(https_server, tmp_path)
    result = pywbemcli.run("instance", "enumerate", ENDPOINT, general=["--password", "wrong"])
    assert result.returncode == 1
    assert "401" in result.stderr + result.stdout
