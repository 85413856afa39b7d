"""The pulled operations, and pywbem's iterations that use them when the server has them."""

import time

import pytest
import pywbem
from served_switch import NAMESPACE

ENDPOINT = "KESTO_FCIPProtocolEndPoint"

# Each pulled enumeration: how it opens, how it goes on, and the operation that gives the same at once.
PULLED = [
    ("OpenEnumerateInstances", "PullInstancesWithPath", "EnumerateInstances"),
    ("OpenEnumerateInstancePaths", "PullInstancePaths", "EnumerateInstanceNames"),
    ("OpenAssociatorInstances", "PullInstancesWithPath", "Associators"),
    ("OpenAssociatorInstancePaths", "PullInstancePaths", "AssociatorNames"),
    ("OpenReferenceInstances", "PullInstancesWithPath", "References"),
    ("OpenReferenceInstancePaths", "PullInstancePaths", "ReferenceNames"),
]
ITERATED = [
    ("IterEnumerateInstances", "EnumerateInstances"),
    ("IterEnumerateInstancePaths", "EnumerateInstanceNames"),
    ("IterAssociatorInstances", "Associators"),
    ("IterAssociatorInstancePaths", "AssociatorNames"),
    ("IterReferenceInstances", "References"),
    ("IterReferenceInstancePaths", "ReferenceNames"),
]


@pytest.fixture
def source_of(tunnel):
    """What an operation starts from: the class to enumerate, or the object to leave."""
    return lambda operation: ENDPOINT if "Enumerate" in operation else tunnel


def objects(result):
    return result.paths if hasattr(result, "paths") else result.instances


def path_of(found):
    path = (found.path if isinstance(found, pywbem.CIMInstance) else found).copy()
    path.host = None  # an enumeration at once does not name it
    return path


def by_path(found):
    """Objects in a form in which two answers can be compared: the path, and the properties of an instance."""
    return sorted((path_of(each).to_wbem_uri(), each.tomof() if isinstance(each, pywbem.CIMInstance) else "")
                  for each in found)


def pull_all(connection, result, pull, at_most):
    found = list(objects(result))
    while not result.eos:
        result = getattr(connection, pull)(result.context, MaxObjectCount=at_most)
        assert 0 < len(objects(result)) <= at_most
        found += objects(result)
    return found


@pytest.mark.parametrize("at_most", [1, 2, 1000])
@pytest.mark.parametrize("opens, pull, at_once", PULLED)
def test_pulling_gives_what_the_whole_operation_gives(connection, source_of, opens, pull, at_once, at_most):
    source = source_of(opens)
    result = getattr(connection, opens)(source, MaxObjectCount=at_most)
    assert len(objects(result)) <= at_most
    found = pull_all(connection, result, pull, at_most)
    assert found
    assert by_path(found) == by_path(getattr(connection, at_once)(source))


@pytest.mark.parametrize("opens, pull, at_once", PULLED)
def test_opening_alone_gives_no_object(connection, source_of, opens, pull, at_once):
    result = getattr(connection, opens)(source_of(opens))
    assert not objects(result)
    assert not result.eos
    assert pull_all(connection, result, pull, 1000)


def test_pulled_objects_name_the_server_and_namespace(connection, server):
    for endpoint in connection.OpenEnumerateInstances(ENDPOINT, MaxObjectCount=1000).instances:
        assert (endpoint.path.host, endpoint.path.namespace) == (server.host, NAMESPACE)


def test_a_base_class_is_pulled_over_all_of_its_subclasses(connection):
    result = connection.OpenEnumerateInstances("CIM_ProtocolEndpoint", MaxObjectCount=3)
    found = pull_all(connection, result, "PullInstancesWithPath", 3)
    assert len({endpoint.classname for endpoint in found}) > 1
    assert by_path(found) == by_path(connection.EnumerateInstances("CIM_ProtocolEndpoint"))


def test_a_property_list_and_the_class_origin_hold_for_all_that_is_pulled(connection):
    result = connection.OpenEnumerateInstances(ENDPOINT, IncludeClassOrigin=True, PropertyList=["TunnelID"],
                                               MaxObjectCount=1)
    for endpoint in pull_all(connection, result, "PullInstancesWithPath", 1):
        assert list(endpoint.properties) == ["TunnelID"]
        assert endpoint.properties["TunnelID"].class_origin == ENDPOINT


def test_the_filters_of_a_traversal_hold_for_all_that_is_pulled(connection, tunnel):
    settings = "KESTO_FCIPSettings"
    result = connection.OpenAssociatorInstancePaths(tunnel, ResultClass=settings, MaxObjectCount=9)
    assert [path.classname for path in result.paths] == [settings]
    assert result.eos


def test_a_closed_enumeration_is_gone(connection, fails_with):
    result = connection.OpenEnumerateInstances(ENDPOINT, MaxObjectCount=1)
    connection.CloseEnumeration(result.context)
    with fails_with("INVALID_ENUMERATION_CONTEXT"):
        connection.PullInstancesWithPath(result.context, MaxObjectCount=1)
    with fails_with("INVALID_ENUMERATION_CONTEXT"):
        connection.CloseEnumeration(result.context)


def test_a_finished_enumeration_is_gone(connection, fails_with):
    opened = connection.OpenEnumerateInstances(ENDPOINT, MaxObjectCount=1)
    pull_all(connection, opened, "PullInstancesWithPath", 1000)
    with fails_with("INVALID_ENUMERATION_CONTEXT"):
        connection.PullInstancesWithPath(opened.context, MaxObjectCount=1)


def test_an_enumeration_that_is_left_alone_ends_after_its_timeout(connection, fails_with):
    result = connection.OpenEnumerateInstances(ENDPOINT, OperationTimeout=1, MaxObjectCount=1)
    time.sleep(2.5)
    with fails_with("INVALID_ENUMERATION_CONTEXT"):
        connection.PullInstancesWithPath(result.context, MaxObjectCount=1)


def test_a_pull_without_objects_keeps_the_enumeration_alive(connection):
    result = connection.OpenEnumerateInstances(ENDPOINT, OperationTimeout=2, MaxObjectCount=0)
    for _ in range(3):
        time.sleep(1)
        result = connection.PullInstancesWithPath(result.context, MaxObjectCount=0)
        assert not result.instances
        assert not result.eos
    assert pull_all(connection, result, "PullInstancesWithPath", 1000)


def test_enumerations_of_one_client_do_not_disturb_each_other(connection):
    first, second = (connection.OpenEnumerateInstancePaths(ENDPOINT, MaxObjectCount=1) for _ in range(2))
    assert first.context != second.context
    paths = [pull_all(connection, result, "PullInstancePaths", 1) for result in (second, first)]
    assert paths[0] == paths[1]


def test_an_unknown_context_is_refused(connection, fails_with):
    with fails_with("INVALID_ENUMERATION_CONTEXT"):
        connection.PullInstancesWithPath(("no such context", NAMESPACE), MaxObjectCount=1)


def test_paths_cannot_be_pulled_as_instances(connection):
    result = connection.OpenEnumerateInstancePaths(ENDPOINT, MaxObjectCount=1)
    with pytest.raises(pywbem.CIMError):
        connection.PullInstancesWithPath(result.context, MaxObjectCount=1)
    with pytest.raises(pywbem.CIMError):
        connection.PullInstances(result.context, MaxObjectCount=1)


def test_filters_are_not_supported(connection):
    with pytest.raises(pywbem.CIMError) as failure:
        connection.OpenEnumerateInstances(ENDPOINT, FilterQueryLanguage="DMTF:FQL",
                                          FilterQuery="TunnelID = 1")
    assert failure.value.status_code in (pywbem.CIM_ERR_FILTERED_ENUMERATION_NOT_SUPPORTED,
                                         pywbem.CIM_ERR_QUERY_LANGUAGE_NOT_SUPPORTED)


@pytest.mark.parametrize("options, error", [
    ({"ContinueOnError": True}, "CONTINUATION_ON_ERROR_NOT_SUPPORTED"),
    ({"OperationTimeout": 0}, "INVALID_OPERATION_TIMEOUT"),
    ({"OperationTimeout": 4294967295}, "INVALID_OPERATION_TIMEOUT"),
])
def test_what_an_enumeration_cannot_do_is_refused(connection, fails_with, options, error):
    with fails_with(error):
        connection.OpenEnumerateInstances(ENDPOINT, **options)


def test_mistakes_in_opening_are_those_of_the_whole_operation(connection, tunnel, fails_with):
    with fails_with("INVALID_CLASS"):
        connection.OpenEnumerateInstances("KESTO_NoSuchClass")
    with fails_with("INVALID_NAMESPACE"):
        connection.OpenEnumerateInstancePaths(ENDPOINT, namespace="root/nowhere")
    with fails_with("INVALID_PARAMETER"):
        connection.OpenAssociatorInstances(tunnel, AssocClass="KESTO_NoSuchAssociation")
    with fails_with("INVALID_PARAMETER"):
        connection.OpenReferenceInstancePaths(tunnel, ResultClass="KESTO_NoSuchAssociation")


def test_queries_are_not_supported(connection):
    query = f"SELECT * FROM {ENDPOINT}"
    for ask in (lambda: connection.OpenQueryInstances("DMTF:CQL", query),
                lambda: list(connection.IterQueryInstances("DMTF:CQL", query).generator),
                lambda: connection.ExecQuery("WQL", query)):
        with pytest.raises(pywbem.CIMError) as failure:
            ask()
        assert failure.value.status_code in (pywbem.CIM_ERR_NOT_SUPPORTED,
                                             pywbem.CIM_ERR_QUERY_LANGUAGE_NOT_SUPPORTED)


@pytest.mark.parametrize("use_pull", [True, False, None])
@pytest.mark.parametrize("iterate, at_once", ITERATED)
def test_an_iteration_gives_what_the_whole_operation_gives(server, source_of, iterate, at_once, use_pull):
    with server.connect(use_pull_operations=use_pull) as connection:
        source = source_of(iterate)
        found = list(getattr(connection, iterate)(source, MaxObjectCount=2))
        assert found
        assert by_path(found) == by_path(getattr(connection, at_once)(source))
