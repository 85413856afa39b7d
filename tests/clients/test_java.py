"""The WBEM client for Java: it reads what pywbem reads."""

import os
import pathlib
import subprocess

import pytest
from served_switch import run

ENDPOINT = "KESTO_FCIPProtocolEndPoint"
STORE_PASSWORD = "trusted"


class Reader:
    """WbemReader.java, pointed at the server."""

    def __init__(self, server, classes, store=None, credentials=None):
        self._command = ["java", "-cp", f"{os.environ['WBEM_JAVA']}:{classes}"]
        # The client loads the TLS of Java by the name of its class.
        self._command += ["--add-exports", "java.base/sun.security.ssl=ALL-UNNAMED"]
        if store:
            self._command += [f"-Djavax.net.ssl.trustStore={store}",
                              f"-Djavax.net.ssl.trustStorePassword={STORE_PASSWORD}"]
        self._command += ["WbemReader", server.url, *(credentials or server.credentials or ("", ""))]

    def run(self, *arguments):
        return subprocess.run([*self._command, *arguments], text=True, capture_output=True, check=False,
                              timeout=60)

    def __call__(self, *arguments):
        result = self.run(*arguments)
        assert result.returncode == 0, f"{result.stderr}{result.stdout}"
        return result.stdout.splitlines()


@pytest.fixture(scope="session")
def classes(tmp_path_factory):
    folder = tmp_path_factory.mktemp("java")
    run("javac", "-Xlint:all", "-Werror", "-cp", os.environ["WBEM_JAVA"], "-d", folder,
        pathlib.Path(__file__).parent / "WbemReader.java")
    return folder


@pytest.fixture(scope="session")
def store(authority, folder):
    """What makes Java trust the authority of the tests."""
    file = folder / "trusted.p12"
    run("keytool", "-importcert", "-noprompt", "-alias", "authority", "-file", authority.certificate,
        "-storetype", "PKCS12", "-storepass", STORE_PASSWORD, "-keystore", file)
    return file


@pytest.fixture
def reader(server, classes, store):
    return Reader(server, classes, store)


def java_value(value):
    return str(value).lower() if isinstance(value, bool) else str(value)


def line_of(instance):
    return " ".join([instance.classname, *sorted(f"{name}={java_value(value)}"
                                                 for name, value in instance.items())])


def test_the_classes_are_listed(reader, connection):
    assert sorted(reader("class-names")) == sorted(connection.EnumerateClassNames(DeepInheritance=True))


def test_a_class_has_its_properties_and_keys(reader, connection):
    declared = connection.GetClass(ENDPOINT, LocalOnly=False)
    first, *properties = reader("class", ENDPOINT)
    assert first == f"{ENDPOINT} {declared.superclass}"
    assert sorted(properties) == sorted(
        f"{value.name} {value.type}{' key' if 'Key' in value.qualifiers else ''}"
        for value in declared.properties.values())


@pytest.mark.parametrize("name", [ENDPOINT, "KESTO_FCIPSettings"])
def test_instances_are_enumerated_and_got(reader, connection, name):
    expected = [line_of(instance) for instance in connection.EnumerateInstances(name)]
    assert reader("instances", name) == expected + expected


def test_instances_are_pulled(reader, connection):
    assert reader("pulled-instances", ENDPOINT) == [
        line_of(instance) for instance in connection.EnumerateInstances(ENDPOINT)]


def test_associations_are_followed(reader, connection, tunnel):
    expected = [f"{operation} {found.classname}"
                for operation in ("AssociatorNames", "Associators", "ReferenceNames", "References")
                for found in getattr(connection, operation)(tunnel)]
    assert sorted(reader("traversals", ENDPOINT)) == sorted(expected)


def test_a_mistake_is_reported_with_the_servers_error(reader):
    result = reader.run("instances", "KESTO_NoSuchClass")
    assert result.returncode == 1
    assert "CIM error 5" in result.stderr


def test_a_wrong_password_is_refused(https_server, classes, store):
    result = Reader(https_server, classes, store, ("operator", "wrong")).run("instances", ENDPOINT)
    assert result.returncode == 1
    assert "401" in result.stderr
    assert not result.stdout


def test_an_unknown_authority_is_refused(https_server, classes):
    result = Reader(https_server, classes).run("instances", ENDPOINT)
    assert result.returncode == 1
    assert "Certificate" in result.stderr
    assert not result.stdout
