"""Who may read the server, and how a client knows that it is the right one."""

import pytest
import pywbem
import served_switch
from served_switch import PASSWORD, USER

ENDPOINT = "KESTO_FCIPProtocolEndPoint"


def read(connection):
    with connection:
        return connection.EnumerateInstanceNames(ENDPOINT)


def test_the_user_reads_with_the_password(https_server):
    assert read(https_server.connect())


def test_a_password_may_have_any_characters(folder, tmp_path):
    password = "a pass:wörd"
    served_switch.add_user(tmp_path / "users", USER, password)
    server = served_switch.ServedSwitch(folder, "odd", "--port", "0", "--users", tmp_path / "users")
    try:
        assert read(server.connect(creds=(USER, password)))
        with pytest.raises(pywbem.AuthError):
            read(server.connect(creds=(USER, "a pass")))
    finally:
        server.stop()


@pytest.mark.parametrize("credentials", [
    None, (USER, "wrong"), (USER, ""), ("nobody", PASSWORD), ("", PASSWORD), (USER, PASSWORD + " "),
    (USER.upper(), PASSWORD),
], ids=["none", "wrong", "empty", "unknown user", "no user", "longer", "user in capitals"])
def test_wrong_credentials_are_refused(https_server, credentials):
    with pytest.raises(pywbem.AuthError):
        read(https_server.connect(creds=credentials))


def test_a_refused_client_may_try_again(https_server):
    for _ in range(3):
        with pytest.raises(pywbem.AuthError):
            read(https_server.connect(creds=(USER, "wrong")))
    assert read(https_server.connect())


def test_without_its_authority_the_certificate_is_not_trusted(https_server):
    with pytest.raises(pywbem.ConnectionError, match="(?i)certificate"):
        read(https_server.connect(ca_certs=None))


def test_another_authority_does_not_do(https_server, tmp_path):
    another = served_switch.Authority(tmp_path, "another").create()
    with pytest.raises(pywbem.ConnectionError, match="(?i)certificate"):
        read(https_server.connect(ca_certs=str(another.certificate)))


def test_a_certificate_of_another_host_does_not_do(https_server, authority, folder):
    certificate, key = authority.sign("elsewhere.example.net", "DNS:elsewhere.example.net")
    server = served_switch.ServedSwitch(folder, "elsewhere", "--tls-port", "0", "--certificate", certificate,
                                        "--private-key", key)
    server.authority = authority
    try:
        with pytest.raises(pywbem.ConnectionError, match="(?i)certificate"):
            read(server.connect())
    finally:
        server.stop()


def test_both_ports_of_one_server_ask_for_the_password(folder, tmp_path):
    served_switch.run(served_switch.BUILD / "bin/kesto-cimserver-certificate", tmp_path)
    certificate = tmp_path / "certificate.pem"
    served_switch.add_user(tmp_path / "users", USER, PASSWORD)
    server = served_switch.ServedSwitch(folder, "both", "--port", "0", "--tls-port", "0", "--certificate",
                                        certificate, "--private-key", tmp_path / "private-key.pem", "--users",
                                        tmp_path / "users")
    try:
        assert sorted(server.urls) == ["http", "https"]
        for url in server.urls.values():
            # The certificate for trials is its own authority.
            options = {"ca_certs": str(certificate), "default_namespace": served_switch.NAMESPACE}
            assert read(pywbem.WBEMConnection(url, (USER, PASSWORD), **options))
            with pytest.raises(pywbem.AuthError):
                read(pywbem.WBEMConnection(url, (USER, "wrong"), **options))
            with pytest.raises(pywbem.AuthError):
                read(pywbem.WBEMConnection(url, **options))
    finally:
        server.stop()


def test_a_client_may_do_without_verification(https_server):
    assert read(https_server.connect(ca_certs=None, no_verification=True))


def test_plain_http_is_not_spoken_on_the_port_of_https(https_server):
    with pytest.raises(pywbem.Error):
        read(pywbem.WBEMConnection(f"http://{https_server.host}", timeout=5))


def test_credentials_do_no_harm_where_none_are_asked_for(http_server):
    assert read(http_server.connect(creds=(USER, PASSWORD)))
