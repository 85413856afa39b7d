"""What the server says of itself, as pywbem's WBEMServer finds it."""

import pytest
import pywbem
from served_switch import NAMESPACE


@pytest.fixture
def wbem_server(connection):
    return pywbem.WBEMServer(connection)


def test_the_interop_namespace_is_found(wbem_server):
    assert wbem_server.interop_ns.lower() in pywbem.WBEMServer.INTEROP_NAMESPACES
    assert wbem_server.namespace_classname in pywbem.WBEMServer.NAMESPACE_CLASSNAMES


def test_the_namespaces_are_listed(wbem_server):
    assert {NAMESPACE, wbem_server.interop_ns} <= set(wbem_server.namespaces)
    assert len(wbem_server.namespace_paths) == len(wbem_server.namespaces)


def test_every_namespace_that_is_listed_has_classes(connection, wbem_server):
    for name in wbem_server.namespaces:
        assert connection.EnumerateClassNames(namespace=name)


def test_the_interop_namespace_names_all_namespaces(connection, wbem_server):
    paths = connection.EnumerateInstanceNames("CIM_Namespace", namespace=wbem_server.interop_ns)
    assert NAMESPACE in [path["Name"] for path in paths]
    for path in paths:
        assert connection.GetInstance(path)["Name"] == path["Name"]


def test_a_namespace_names_those_in_it(connection):
    paths = connection.EnumerateInstanceNames("__Namespace", namespace="root")
    assert "cimv2" in [path["Name"] for path in paths]
    for path in paths:
        assert connection.GetInstance(path)["Name"] == path["Name"]


def test_the_server_has_a_brand_and_a_version(wbem_server):
    assert wbem_server.brand
    assert wbem_server.version


def test_the_object_manager_is_one_and_can_be_got(connection, wbem_server):
    manager = wbem_server.cimom_inst
    assert manager["Name"]
    [path] = connection.EnumerateInstanceNames("CIM_ObjectManager", namespace=wbem_server.interop_ns)
    assert connection.GetInstance(path)["Name"] == manager["Name"]


def test_the_way_to_speak_to_the_server_is_cim_xml(connection, wbem_server):
    ways = connection.EnumerateInstances("CIM_ObjectManagerCommunicationMechanism",
                                         namespace=wbem_server.interop_ns)
    assert ways
    CIM_XML = 2
    assert CIM_XML in [way["CommunicationMechanism"] for way in ways]


def test_no_profile_is_advertised(wbem_server):
    assert wbem_server.profiles == []
    assert wbem_server.get_selected_profiles() == []


def test_namespaces_cannot_be_made_nor_removed(wbem_server):
    with pytest.raises(pywbem.Error):
        wbem_server.create_namespace("root/another")
    with pytest.raises(pywbem.Error):
        wbem_server.delete_namespace(NAMESPACE)
    assert "root/another" not in wbem_server.namespaces
