"""Reading instances: EnumerateInstances, EnumerateInstanceNames and GetInstance."""

import pytest
import pywbem
from served_switch import ASSOCIATIONS, CLASSES

ENDPOINT = "KESTO_FCIPProtocolEndPoint"

# What the tunnels' endpoints say of themselves, with the types of their class.
ENDPOINT_TYPES = {
    "SystemCreationClassName": "string", "SystemName": "string", "Name": "string",
    "CreationClassName": "string", "NameFormat": "string", "TunnelID": "uint16",
    "RemoteIPAddress": "string", "LocalIPAddress": "string", "RemoteWWN": "string", "LocalWWN": "string",
    "CommittedRate": "uint32", "Compression": "boolean", "SelectiveACK": "boolean", "WAN_TOV": "boolean",
    "PathMTU": "boolean", "MaxRetransmissions": "uint32", "KeepAliveTimeout": "uint32",
    "RetransmitTime": "uint16", "ProtocolIFType": "uint16",
}

# The classes of which every name leads back to its object.
FOUND_BY_NAME = [
    "KESTO_FCIPProtocolEndPoint", "KESTO_TCPProtocolEndPoint", "KESTO_IPProtocolEndPoint",
    "KESTO_RemoteIPServiceAccessPoint", "KESTO_RemoteTCPPort", "KESTO_FCIPSettings", "KESTO_TCPSettings",
    "KESTO_IPSettings", "KESTO_IPEndPointStatistics", "KESTO_TCPEndPointStatistics",
    "KESTO_EthernetPortStatistics",
]


# Objects of the first cannot be built; the others are associations that only a traversal knows.
WITHOUT_INSTANCES = {"KESTO_RemoteIPPort", "KESTO_SANTCPEndpoint", "KESTO_FCPortProtocolEndPoint",
                     "KESTO_EthernetPortProtocolEndpoint"}


def names_of(instances):
    return sorted(str(instance.path) for instance in instances)


# One of the switch's ports has no counters: the association with them has a name but no instance.
@pytest.mark.parametrize("name", [name for name in CLASSES if name != "KESTO_EthernetPortStatisticalData"])
def test_as_many_names_as_instances(connection, name):
    instances = connection.EnumerateInstances(name)
    assert len(connection.EnumerateInstanceNames(name)) == len(instances)
    assert bool(instances) == (name not in WITHOUT_INSTANCES)


def test_an_endpoint_has_its_properties_with_their_types(connection, tunnel):
    endpoint = connection.GetInstance(tunnel)
    assert {name: value.type for name, value in endpoint.properties.items()} == ENDPOINT_TYPES
    assert endpoint["TunnelID"] == 1
    assert endpoint["Compression"] is True
    assert isinstance(endpoint["CommittedRate"], pywbem.Uint32)


@pytest.mark.parametrize("name", CLASSES)
def test_every_property_is_one_of_the_class_and_of_its_type(connection, name):
    declared = connection.GetClass(name, LocalOnly=False).properties
    for instance in connection.EnumerateInstances(name):
        for value in instance.properties.values():
            assert value.name in declared, f"{name}.{value.name}"
            assert (value.type, value.is_array) == (declared[value.name].type, declared[value.name].is_array)


@pytest.mark.parametrize("name", CLASSES)
def test_the_keys_of_a_path_are_those_of_the_class(connection, name):
    declared = connection.GetClass(name, LocalOnly=False, IncludeQualifiers=True).properties.values()
    keys = {value.name.lower() for value in declared if "Key" in value.qualifiers}
    for path in connection.EnumerateInstanceNames(name):
        assert {key.lower() for key in path.keybindings} == keys


@pytest.mark.parametrize("name", FOUND_BY_NAME)
def test_a_name_leads_back_to_its_instance(connection, name):
    found = [connection.GetInstance(path) for path in connection.EnumerateInstanceNames(name)]
    enumerated = connection.EnumerateInstances(name)
    assert [instance.properties for instance in found] == [instance.properties for instance in enumerated]


@pytest.mark.parametrize("name", sorted(set(CLASSES) & set(ASSOCIATIONS) - WITHOUT_INSTANCES))
def test_the_name_of_an_association_leads_back_to_its_ends(connection, name):
    paths = connection.EnumerateInstanceNames(name)
    assert paths
    for path in paths:
        instance = connection.GetInstance(path)
        assert len([value for value in instance.properties.values() if value.type == "reference"]) == 2


def test_a_base_class_enumerates_the_instances_of_its_subclasses(connection):
    endpoints = connection.EnumerateInstances("CIM_ProtocolEndpoint")
    subclasses = connection.EnumerateClassNames(ClassName="CIM_ProtocolEndpoint", DeepInheritance=True)
    served = [name for name in CLASSES if name in subclasses]
    assert {ENDPOINT, "KESTO_TCPProtocolEndPoint", "KESTO_IPProtocolEndPoint"} <= set(served)
    assert {endpoint.classname for endpoint in endpoints} == set(served)
    assert names_of(endpoints) == sorted(
        name for subclass in served for name in names_of(connection.EnumerateInstances(subclass)))
    names = connection.EnumerateInstanceNames("CIM_ProtocolEndpoint")
    assert sorted(map(str, names)) == sorted(
        str(name) for subclass in served for name in connection.EnumerateInstanceNames(subclass))


def test_without_deep_inheritance_only_the_properties_of_the_base_class_come(connection):
    base = connection.GetClass("CIM_ProtocolEndpoint", LocalOnly=False).properties
    endpoints = connection.EnumerateInstances("CIM_ProtocolEndpoint", DeepInheritance=False)
    assert len(endpoints) == len(connection.EnumerateInstanceNames("CIM_ProtocolEndpoint"))
    for endpoint in endpoints:
        assert endpoint.properties
        assert set(endpoint.properties) <= set(base)


@pytest.mark.parametrize("wanted, got", [
    (["TunnelID"], ["TunnelID"]),
    (["TunnelID", "Compression"], ["TunnelID", "Compression"]),
    (["tunnelid"], ["TunnelID"]),
    (["TunnelID", "TunnelID"], ["TunnelID"]),
    (["TunnelID", "NoSuchProperty"], ["TunnelID"]),
    (["NoSuchProperty"], []),
    ([], []),
])
def test_a_property_list_chooses_the_properties(connection, tunnel, wanted, got):
    assert list(connection.GetInstance(tunnel, PropertyList=wanted).properties) == got
    for endpoint in connection.EnumerateInstances(ENDPOINT, PropertyList=wanted):
        assert list(endpoint.properties) == got
        # The keys stay in the path, whatever was chosen.
        assert set(endpoint.path.keybindings) == set(tunnel.keybindings)


def test_class_origins_come_when_asked_for(connection, tunnel):
    plain = connection.GetInstance(tunnel)
    assert not any(value.class_origin for value in plain.properties.values())
    asked = [connection.GetInstance(tunnel, IncludeClassOrigin=True),
             connection.EnumerateInstances(ENDPOINT, IncludeClassOrigin=True)[0],
             connection.Associators(connection.AssociatorNames(tunnel, AssocClass="KESTO_FCIPTCPEndpoint")[0],
                                    AssocClass="KESTO_FCIPTCPEndpoint", IncludeClassOrigin=True)[0]]
    declared = connection.GetClass(ENDPOINT, LocalOnly=False, IncludeClassOrigin=True).properties
    for endpoint in asked:
        assert {name: value.class_origin for name, value in endpoint.properties.items()} == {
            name: declared[name].class_origin for name in endpoint.properties}


def test_only_local_properties_are_those_that_the_class_itself_declares(connection):
    [path, *_] = connection.EnumerateInstanceNames("KESTO_TCPSettings")
    local = connection.GetClass(path.classname, LocalOnly=True).properties
    everything = connection.GetInstance(path, LocalOnly=False).properties
    assert set(everything) - set(local)
    assert set(everything) & set(local)
    for settings in (connection.GetInstance(path, LocalOnly=True),
                     connection.EnumerateInstances(path.classname, LocalOnly=True)[0]):
        assert set(settings.properties) == set(everything) & set(local)


def test_qualifiers_come_when_asked_for(connection, tunnel):
    assert not any(value.qualifiers for value in connection.GetInstance(tunnel).properties.values())
    for endpoint in (connection.GetInstance(tunnel, IncludeQualifiers=True),
                     connection.EnumerateInstances(ENDPOINT, IncludeQualifiers=True)[0]):
        assert "Key" in endpoint.properties["Name"].qualifiers
        assert "Key" not in endpoint.properties["TunnelID"].qualifiers


def test_an_unknown_key_is_not_found(connection, tunnel, fails_with):
    tunnel["Name"] = "99_192.0.2.1_192.0.2.129"
    with fails_with("NOT_FOUND") as failure:
        connection.GetInstance(tunnel)
    assert ENDPOINT in failure.value.status_description


@pytest.mark.parametrize("name", ["KESTO_NoSuchClass", "CIM_NoSuchClass"])
def test_an_unknown_class_is_invalid(connection, tunnel, fails_with, name):
    with fails_with("INVALID_CLASS"):
        connection.EnumerateInstances(name)
    with fails_with("INVALID_CLASS"):
        connection.EnumerateInstanceNames(name)
    tunnel.classname = name
    with fails_with("INVALID_CLASS"):
        connection.GetInstance(tunnel)


@pytest.mark.parametrize("name", ["root/nowhere", "cimv2", "root/cimv2/deeper"])
def test_an_unknown_namespace_is_invalid(connection, tunnel, fails_with, name):
    with fails_with("INVALID_NAMESPACE"):
        connection.EnumerateInstances(ENDPOINT, namespace=name)
    with fails_with("INVALID_NAMESPACE"):
        connection.EnumerateClassNames(namespace=name)
    tunnel.namespace = name
    with fails_with("INVALID_NAMESPACE"):
        connection.GetInstance(tunnel)


def test_names_are_found_in_any_letter_case(connection, tunnel):
    expected = connection.GetInstance(tunnel).properties
    tunnel.classname = tunnel.classname.upper()
    tunnel.keybindings = {key.upper(): value for key, value in tunnel.keybindings.items()}
    assert connection.GetInstance(tunnel).properties == expected
    assert len(connection.EnumerateInstances(ENDPOINT.lower(), namespace="ROOT/CIMV2")) == len(
        connection.EnumerateInstances(ENDPOINT))
