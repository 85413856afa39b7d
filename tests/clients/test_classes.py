"""Reading the model itself: classes and qualifier declarations."""

import pytest
import pywbem
from served_switch import ASSOCIATIONS, CLASSES, NAMESPACE

ENDPOINT = "KESTO_FCIPProtocolEndPoint"


@pytest.fixture
def model(connection):
    """Every class by its name, complete."""
    classes = connection.EnumerateClasses(DeepInheritance=True, LocalOnly=False, IncludeQualifiers=True,
                                          IncludeClassOrigin=True)
    return {declared.classname: declared for declared in classes}


def test_the_model_has_every_class_that_is_served(model):
    assert set(CLASSES) <= set(model)
    for name, declared in model.items():
        assert declared.superclass is None or declared.superclass in model, name
        assert ("Association" in declared.qualifiers) or name not in ASSOCIATIONS, name


def test_names_and_declarations_list_the_same_classes(connection, model):
    assert sorted(connection.EnumerateClassNames(DeepInheritance=True)) == sorted(model)
    top = connection.EnumerateClassNames(DeepInheritance=False)
    assert sorted(top) == sorted(name for name, declared in model.items() if declared.superclass is None)
    assert sorted(top) == sorted(declared.classname for declared in connection.EnumerateClasses())


def test_a_class_lists_its_subclasses(connection, model):
    for parent in model:
        direct = [name for name, declared in model.items() if declared.superclass == parent]
        assert sorted(connection.EnumerateClassNames(ClassName=parent)) == sorted(direct)
    deep = connection.EnumerateClassNames(ClassName="CIM_ProtocolEndpoint", DeepInheritance=True)
    assert ENDPOINT in deep
    assert "CIM_ProtocolEndpoint" not in deep


def test_each_class_is_got_as_it_is_enumerated(connection, model):
    for name, declared in model.items():
        assert connection.GetClass(name, LocalOnly=False, IncludeQualifiers=True,
                                   IncludeClassOrigin=True) == declared


def test_only_local_elements_are_those_that_a_class_declares(connection, model):
    for name, declared in model.items():
        local = connection.GetClass(name, LocalOnly=True).properties
        assert set(local) == {value.name for value in declared.properties.values() if not value.propagated}
        inherited = model[declared.superclass].properties if declared.superclass else {}
        assert set(declared.properties) == set(local) | set(inherited)


def test_a_property_originates_in_the_class_that_first_declares_it(model):
    for name, declared in model.items():
        for value in declared.properties.values():
            first = declared
            while first.superclass and value.name in model[first.superclass].properties:
                first = model[first.superclass]
            assert value.class_origin == first.classname, f"{name}.{value.name}"


def test_qualifiers_and_origins_come_when_asked_for(connection):
    bare = connection.GetClass(ENDPOINT, LocalOnly=False, IncludeQualifiers=False, IncludeClassOrigin=False)
    assert not bare.qualifiers
    assert not any(value.qualifiers or value.class_origin for value in bare.properties.values())
    full = connection.GetClass(ENDPOINT, LocalOnly=False, IncludeQualifiers=True, IncludeClassOrigin=True)
    assert full.qualifiers["Description"].value
    assert full.properties["Name"].qualifiers["Key"].value is True
    assert all(value.class_origin for value in full.properties.values())


@pytest.mark.parametrize("wanted, got", [(["TunnelID"], ["TunnelID"]), (["tunnelid"], ["TunnelID"]),
                                         (["NoSuchProperty"], []), ([], [])])
def test_a_property_list_chooses_the_properties_of_a_class(connection, wanted, got):
    assert list(connection.GetClass(ENDPOINT, LocalOnly=False, PropertyList=wanted).properties) == got


def test_a_class_is_found_in_any_letter_case(connection):
    assert connection.GetClass(ENDPOINT.upper()).classname == ENDPOINT


def test_the_path_of_a_class_names_it(connection):
    path = connection.GetClass(ENDPOINT).path
    assert (path.classname, path.namespace) == (ENDPOINT, NAMESPACE)


def test_an_unknown_class_is_not_found(connection, fails_with):
    with fails_with("NOT_FOUND"):
        connection.GetClass("KESTO_NoSuchClass")
    with fails_with("INVALID_CLASS"):
        connection.EnumerateClasses(ClassName="KESTO_NoSuchClass")
    with fails_with("INVALID_CLASS"):
        connection.EnumerateClassNames(ClassName="KESTO_NoSuchClass")


def test_every_qualifier_of_the_model_is_declared(connection, model):
    declarations = pywbem.NocaseDict((declaration.name, declaration)
                                     for declaration in connection.EnumerateQualifiers())
    for declared in model.values():
        elements = [declared, *declared.properties.values(), *declared.methods.values()]
        for element in elements:
            for qualifier in element.qualifiers.values():
                assert qualifier.name in declarations
                assert qualifier.type == declarations[qualifier.name].type


def test_each_qualifier_is_got_as_it_is_enumerated(connection):
    declarations = connection.EnumerateQualifiers()
    assert declarations
    for declaration in declarations:
        assert connection.GetQualifier(declaration.name) == declaration
        assert connection.GetQualifier(declaration.name.upper()) == declaration


def test_key_is_a_boolean_of_properties_and_references_that_cannot_be_overridden(connection):
    key = connection.GetQualifier("Key")
    assert (key.type, key.value, key.overridable) == ("boolean", False, False)
    assert {scope for scope, holds in key.scopes.items() if holds} == {"PROPERTY", "REFERENCE"}


def test_an_unknown_qualifier_is_not_found(connection, fails_with):
    with fails_with("NOT_FOUND"):
        connection.GetQualifier("NoSuchQualifier")


def test_values_of_mapped_properties_have_names(connection, model):
    mapped = [(name, value.name) for name, declared in model.items() if name in CLASSES
              for value in declared.properties.values()
              if "ValueMap" in value.qualifiers and "Values" in value.qualifiers]
    assert mapped
    for name, property_name in mapped:
        names = pywbem.ValueMapping.for_property(connection, NAMESPACE, name, property_name)
        for instance in connection.EnumerateInstances(name):
            if instance.get(property_name) is not None:
                assert names.tovalues(instance[property_name])


def test_the_type_of_a_tunnels_interface_is_fibre_channel(connection, tunnel):
    names = pywbem.ValueMapping.for_property(connection, NAMESPACE, ENDPOINT, "ProtocolIFType")
    assert names.tovalues(connection.GetInstance(tunnel)["ProtocolIFType"]) == "Fibre Channel"
