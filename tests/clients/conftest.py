"""The servers and clients that the tests share."""

import pytest
import pywbem
import served_switch


@pytest.fixture(scope="session")
def folder(tmp_path_factory):
    return tmp_path_factory.mktemp("server")


@pytest.fixture(scope="session")
def authority(folder):
    return served_switch.Authority(folder, "authority").create()


@pytest.fixture(scope="session")
def http_server(folder):
    """Everyone on this machine may read it."""
    server = served_switch.ServedSwitch(folder, "http", "--port", "0")
    yield server
    server.stop()


@pytest.fixture(scope="session")
def https_server(folder, authority):
    """Only its user may read it, over TLS."""
    certificate, key = authority.sign("127.0.0.1", "IP:127.0.0.1")
    users = folder / "users"
    served_switch.add_user(users, served_switch.USER, served_switch.PASSWORD)
    server = served_switch.ServedSwitch(folder, "https", "--tls-port", "0", "--certificate", certificate,
                                        "--private-key", key, "--users", users)
    server.authority = authority
    server.credentials = (served_switch.USER, served_switch.PASSWORD)
    yield server
    server.stop()


@pytest.fixture(scope="session", params=["http", "https"])
def server(request):
    return request.getfixturevalue(f"{request.param}_server")


@pytest.fixture
def connection(server):
    with server.connect() as connection:
        yield connection


@pytest.fixture
def tunnel(connection):
    """The path of the first tunnel's endpoint."""
    return connection.EnumerateInstanceNames("KESTO_FCIPProtocolEndPoint")[0]


@pytest.fixture
def fails_with():
    """Expects the CIM error of that name: `with fails_with("NOT_FOUND"): ...`"""

    def expect(name):
        code = getattr(pywbem, f"CIM_ERR_{name}")
        return pytest.raises(pywbem.CIMError, check=lambda error: error.status_code == code)

    return expect
