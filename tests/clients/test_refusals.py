"""What the server does not do: it is read-only, has no methods, and takes no indications."""

import pytest
import pywbem

ENDPOINT = "KESTO_FCIPProtocolEndPoint"


def changed_endpoint(tunnel):
    return pywbem.CIMInstance(ENDPOINT, {"TunnelID": pywbem.Uint16(7)}, path=tunnel)


@pytest.mark.parametrize("change", [
    lambda connection, tunnel: connection.CreateInstance(changed_endpoint(tunnel)),
    lambda connection, tunnel: connection.ModifyInstance(changed_endpoint(tunnel)),
    lambda connection, tunnel: connection.DeleteInstance(tunnel),
    lambda connection, tunnel: connection.CreateClass(pywbem.CIMClass("KESTO_Another")),
    lambda connection, tunnel: connection.ModifyClass(pywbem.CIMClass(ENDPOINT)),
    lambda connection, tunnel: connection.DeleteClass(ENDPOINT),
    lambda connection, tunnel: connection.SetQualifier(
        pywbem.CIMQualifierDeclaration("Another", "boolean", scopes={"CLASS": True})),
    lambda connection, tunnel: connection.DeleteQualifier("Key"),
], ids=["CreateInstance", "ModifyInstance", "DeleteInstance", "CreateClass", "ModifyClass", "DeleteClass",
        "SetQualifier", "DeleteQualifier"])
def test_nothing_can_be_changed(connection, tunnel, fails_with, change):
    before = connection.GetInstance(tunnel)
    with fails_with("NOT_SUPPORTED"):
        change(connection, tunnel)
    assert connection.GetInstance(tunnel) == before


@pytest.mark.parametrize("target", ["instance", "class"])
def test_there_are_no_methods(connection, tunnel, target):
    with pytest.raises(pywbem.CIMError) as failure:
        connection.InvokeMethod("BroadcastReset", tunnel if target == "instance" else ENDPOINT)
    assert failure.value.status_code in (pywbem.CIM_ERR_METHOD_NOT_FOUND, pywbem.CIM_ERR_METHOD_NOT_AVAILABLE,
                                         pywbem.CIM_ERR_NOT_SUPPORTED)


def test_an_indication_is_not_taken(connection):
    with pytest.raises((pywbem.HTTPError, pywbem.CIMError)):
        connection.ExportIndication(pywbem.CIMInstance("CIM_AlertIndication", {"Message": "nothing"}))


def test_the_connection_serves_on_after_a_refusal(connection, tunnel, fails_with):
    for _ in range(3):
        with fails_with("NOT_SUPPORTED"):
            connection.DeleteInstance(tunnel)
        assert connection.GetInstance(tunnel)["TunnelID"] == 1
