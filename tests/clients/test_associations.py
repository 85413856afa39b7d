"""Following associations, of instances and of classes."""

import pytest
import pywbem
from served_switch import ASSOCIATIONS, CLASSES, NAMESPACE, NOT_FOUND_BY_NAME

ENDPOINT = "KESTO_FCIPProtocolEndPoint"
SETTINGS = "KESTO_FCIPSettings"
BETWEEN = "KESTO_FCIPElementSettingData"

# The classes whose objects take part in an association.
SOURCES = [name for name in CLASSES
           if name not in ASSOCIATIONS and name not in ("KESTO_RemoteIPPort", "KESTO_TCPStatisticalData")]


def paths_of(instances):
    return [instance.path for instance in instances]


def distinct(paths):
    return len(paths) == len({path.to_wbem_uri(format="canonical") for path in paths})


def test_a_tunnel_leads_to_its_settings(connection, tunnel):
    [settings] = connection.Associators(tunnel, AssocClass=BETWEEN)
    assert settings.classname == SETTINGS
    assert connection.AssociatorNames(tunnel, AssocClass=BETWEEN) == [settings.path]


def test_settings_lead_back_to_their_tunnel(connection, tunnel):
    [settings] = connection.AssociatorNames(tunnel, AssocClass=BETWEEN)
    [back] = connection.AssociatorNames(settings, AssocClass=BETWEEN)
    assert back.keybindings == tunnel.keybindings
    assert connection.GetInstance(back).properties == connection.GetInstance(tunnel).properties


def test_a_reference_names_both_ends(connection, tunnel):
    [reference] = connection.References(tunnel, ResultClass=BETWEEN)
    assert reference.classname == BETWEEN
    ends = [value.value for value in reference.properties.values() if value.type == "reference"]
    [settings] = connection.AssociatorNames(tunnel, AssocClass=BETWEEN)
    assert sorted(end.classname.lower() for end in ends) == sorted([ENDPOINT.lower(), SETTINGS.lower()])
    assert tunnel.keybindings in [end.keybindings for end in ends]
    assert settings.keybindings in [end.keybindings for end in ends]
    assert connection.ReferenceNames(tunnel, ResultClass=BETWEEN) == [reference.path]


@pytest.mark.parametrize("name", SOURCES)
def test_what_a_traversal_names_can_be_got(connection, server, name):
    for source in connection.EnumerateInstanceNames(name):
        paths = (connection.AssociatorNames(source) + connection.ReferenceNames(source)
                 + paths_of(connection.Associators(source)) + paths_of(connection.References(source)))
        assert paths, source
        for path in paths:
            assert path.namespace == NAMESPACE
            assert path.host == server.host, "the path names another server than the client's"
            if path.classname.lower() not in NOT_FOUND_BY_NAME:
                assert connection.GetInstance(path).classname.lower() == path.classname.lower()


@pytest.mark.parametrize("name", SOURCES)
def test_a_traversal_names_each_object_once(connection, name):
    for source in connection.EnumerateInstanceNames(name):
        for traversal in (connection.AssociatorNames, connection.ReferenceNames):
            assert distinct(traversal(source))
        for traversal in (connection.Associators, connection.References):
            assert distinct(paths_of(traversal(source)))


def test_the_superclass_of_an_association_stands_for_all_of_its_subclasses(connection, tunnel):
    base = connection.GetClass(BETWEEN).superclass
    assert connection.AssociatorNames(tunnel, AssocClass=base) == \
        connection.AssociatorNames(tunnel, AssocClass=BETWEEN)
    assert connection.ReferenceNames(tunnel, ResultClass=base) == \
        connection.ReferenceNames(tunnel, ResultClass=BETWEEN)
    dependent = connection.ReferenceNames(tunnel, ResultClass="CIM_Dependency")
    assert {path.classname for path in dependent} >= {"KESTO_FCIPTCPEndpoint", "KESTO_SANFCIPEndpoint"}
    assert BETWEEN not in {path.classname for path in dependent}


def test_the_result_class_chooses_among_the_associators(connection, tunnel):
    [settings] = connection.AssociatorNames(tunnel, ResultClass=SETTINGS)
    assert settings.classname == SETTINGS
    by_base = connection.AssociatorNames(tunnel, ResultClass="CIM_SettingData")
    assert {path.classname for path in by_base} == {SETTINGS, "KESTO_FCIPProfile"}
    assert len(by_base) < len(connection.AssociatorNames(tunnel))


def test_the_roles_choose_among_the_associators(connection, tunnel):
    [reference] = connection.References(tunnel, ResultClass=BETWEEN)
    [role] = [name for name, value in reference.items()
              if isinstance(value, pywbem.CIMInstanceName) and value.classname.lower() == ENDPOINT.lower()]
    [result_role] = [name for name, value in reference.items()
                     if isinstance(value, pywbem.CIMInstanceName) and value.classname == SETTINGS]
    for arguments, count in [({"Role": role, "ResultRole": result_role}, 1), ({"Role": role}, 1),
                             ({"ResultRole": result_role}, 1), ({"Role": result_role}, 0),
                             ({"ResultRole": role}, 0), ({"Role": "NoSuchRole"}, 0)]:
        assert len(connection.AssociatorNames(tunnel, AssocClass=BETWEEN, **arguments)) == count
        assert len(connection.Associators(tunnel, AssocClass=BETWEEN, **arguments)) == count
    assert len(connection.ReferenceNames(tunnel, ResultClass=BETWEEN, Role=role)) == 1
    assert len(connection.References(tunnel, ResultClass=BETWEEN, Role=result_role)) == 0


def test_a_property_list_chooses_the_properties_of_a_traversal(connection, tunnel):
    [settings] = connection.Associators(tunnel, AssocClass=BETWEEN, PropertyList=["IPComp"])
    assert list(settings.properties) == ["IPComp"]
    [reference] = connection.References(tunnel, ResultClass=BETWEEN, PropertyList=["SettingData"])
    assert list(reference.properties) == ["SettingData"]


@pytest.mark.parametrize("operation", ["Associators", "AssociatorNames"])
def test_an_unknown_association_class_is_an_invalid_parameter(connection, tunnel, fails_with, operation):
    for source in (tunnel, ENDPOINT):
        with fails_with("INVALID_PARAMETER"):
            getattr(connection, operation)(source, AssocClass="KESTO_NoSuchAssociation")
        with fails_with("INVALID_PARAMETER"):
            getattr(connection, operation)(source, ResultClass="KESTO_NoSuchClass")


@pytest.mark.parametrize("operation", ["References", "ReferenceNames"])
def test_an_unknown_class_of_references_is_an_invalid_parameter(connection, tunnel, fails_with, operation):
    for source in (tunnel, ENDPOINT):
        with fails_with("INVALID_PARAMETER"):
            getattr(connection, operation)(source, ResultClass="KESTO_NoSuchAssociation")


@pytest.mark.parametrize("operation", ["Associators", "AssociatorNames", "References", "ReferenceNames"])
def test_an_unknown_source_class_is_an_invalid_class_or_parameter(connection, tunnel, operation):
    tunnel.classname = "KESTO_NoSuchClass"
    for source in (tunnel, "KESTO_NoSuchClass"):
        with pytest.raises(pywbem.CIMError) as failure:
            getattr(connection, operation)(source)
        assert failure.value.status_code in (pywbem.CIM_ERR_INVALID_PARAMETER, pywbem.CIM_ERR_INVALID_CLASS)


def test_a_class_leads_to_the_classes_that_its_instances_lead_to(connection, tunnel):
    names = connection.AssociatorNames(ENDPOINT)
    assert all(isinstance(name, pywbem.CIMClassName) and name.namespace == NAMESPACE for name in names)
    known = {name.classname.lower() for name in names}
    for associator in connection.AssociatorNames(tunnel):
        chain = [associator.classname]
        while superclass := connection.GetClass(chain[-1]).superclass:
            chain.append(superclass)
        assert known & {name.lower() for name in chain}, chain
    declared = connection.Associators(ENDPOINT)
    assert sorted(name.classname for name, _ in declared) == sorted(name.classname for name in names)
    assert all(name.classname == declaration.classname for name, declaration in declared)


def test_the_association_class_chooses_among_the_classes(connection):
    names = connection.AssociatorNames(ENDPOINT, AssocClass=BETWEEN)
    assert SETTINGS in [name.classname for name in names]
    assert len(names) < len(connection.AssociatorNames(ENDPOINT))


def test_a_class_has_the_association_classes_that_its_instances_have(connection, tunnel):
    names = connection.ReferenceNames(ENDPOINT)
    used = {path.classname for path in connection.ReferenceNames(tunnel)}
    assert used <= {name.classname for name in names}
    declared = connection.References(ENDPOINT, IncludeQualifiers=True)
    assert sorted(name.classname for name, _ in declared) == sorted(name.classname for name in names)
    for _, declaration in declared:
        assert declaration.qualifiers["Association"].value is True
    [between] = connection.ReferenceNames(ENDPOINT, ResultClass=BETWEEN)
    assert between.classname == BETWEEN
