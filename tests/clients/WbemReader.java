// Reads a CIM server with the WBEM client for Java (the javax.wbem interface of JSR 48), and prints what it
// has read, a line each, for test_java.py.
//
// Usage: WbemReader URL USER PASSWORD ACTION [ARGUMENT]...; an empty user is none
import java.util.ArrayList;
import java.util.List;
import java.util.Locale;
import java.util.Set;
import java.util.TreeSet;
import javax.security.auth.Subject;
import org.metricshub.wbem.javax.cim.CIMClass;
import org.metricshub.wbem.javax.cim.CIMInstance;
import org.metricshub.wbem.javax.cim.CIMObjectPath;
import org.metricshub.wbem.javax.cim.CIMProperty;
import org.metricshub.wbem.javax.cim.UnsignedInteger32;
import org.metricshub.wbem.javax.wbem.CloseableIterator;
import org.metricshub.wbem.javax.wbem.WBEMException;
import org.metricshub.wbem.javax.wbem.client.EnumerateResponse;
import org.metricshub.wbem.javax.wbem.client.PasswordCredential;
import org.metricshub.wbem.javax.wbem.client.UserPrincipal;
import org.metricshub.wbem.javax.wbem.client.WBEMClient;
import org.metricshub.wbem.javax.wbem.client.WBEMClientFactory;

public final class WbemReader {
    private static final String NAMESPACE = "root/cimv2";
    // Pulled so many at a time, so that an enumeration takes several pulls.
    private static final UnsignedInteger32 AT_MOST = new UnsignedInteger32(2);
    private static final UnsignedInteger32 TIMEOUT = new UnsignedInteger32(30);

    private final WBEMClient client;

    private WbemReader(String url, String user, String password) throws WBEMException {
        client = WBEMClientFactory.getClient("CIM-XML");
        client.setProperty("sblim.wbem.sslClientPeerVerification", "true");
        Subject subject = new Subject();
        if (!user.isEmpty()) {
            subject.getPrincipals().add(new UserPrincipal(user));
            subject.getPrivateCredentials().add(new PasswordCredential(password));
        }
        client.initialize(new CIMObjectPath(url + "/" + NAMESPACE), subject, new Locale[] {Locale.US});
    }

    public static void main(String[] arguments) {
        try {
            WbemReader reader = new WbemReader(arguments[0], arguments[1], arguments[2]);
            String argument = arguments.length > 4 ? arguments[4] : null;
            switch (arguments[3]) {
                case "class-names" -> reader.printClassNames();
                case "class" -> reader.printClass(argument);
                case "instances" -> reader.printInstances(argument);
                case "pulled-instances" -> reader.printPulledInstances(argument);
                case "traversals" -> reader.printTraversals(argument);
                default -> throw new IllegalArgumentException("unknown action " + arguments[3]);
            }
        } catch (WBEMException error) {
            System.err.println("CIM error " + error.getID() + ": " + error.getMessage());
            for (Throwable cause = error.getCause(); cause != null; cause = cause.getCause()) {
                System.err.println("from " + cause);
            }
            System.exit(1);
        }
    }

    private static CIMObjectPath classPath(String name) {
        return new CIMObjectPath(null, null, null, NAMESPACE, name, null);
    }

    private void printClassNames() throws WBEMException {
        for (CIMObjectPath path : all(client.enumerateClassNames(classPath(""), true))) {
            System.out.println(path.getObjectName());
        }
    }

    private void printClass(String name) throws WBEMException {
        CIMClass declared = client.getClass(classPath(name), false, true, true, null);
        System.out.println(declared.getName() + " " + declared.getSuperClassName());
        for (var property : declared.getProperties()) {
            String key = property.isKey() ? " key" : "";
            System.out.println(property.getName() + " " + property.getDataType() + key);
        }
    }

    // Each instance of a class, by enumeration and by its name.
    private void printInstances(String name) throws WBEMException {
        CIMObjectPath enumerated = classPath(name);
        for (CIMInstance instance : all(client.enumerateInstances(enumerated, true, false, false, null))) {
            print(instance);
        }
        for (CIMObjectPath path : all(client.enumerateInstanceNames(enumerated))) {
            print(client.getInstance(path, false, false, null));
        }
    }

    private void printPulledInstances(String name) throws WBEMException {
        CIMObjectPath path = classPath(name);
        EnumerateResponse<CIMInstance> response =
            client.enumerateInstances(path, true, false, null, null, null, TIMEOUT, false, AT_MOST);
        List<CIMInstance> instances = new ArrayList<>(all(response.getResponses()));
        while (!response.isEnd()) {
            response = client.getInstancesWithPath(path, response.getContext(), AT_MOST);
            instances.addAll(all(response.getResponses()));
        }
        for (CIMInstance instance : instances) {
            print(instance);
        }
    }

    // The classes of what surrounds the first instance of a class: the operation, then the class.
    private void printTraversals(String name) throws WBEMException {
        CIMObjectPath source = all(client.enumerateInstanceNames(classPath(name))).get(0);
        for (CIMObjectPath path : all(client.associatorNames(source, null, null, null, null))) {
            System.out.println("AssociatorNames " + path.getObjectName());
        }
        for (CIMInstance found :
             all(client.associatorInstances(source, null, null, null, null, false, null))) {
            System.out.println("Associators " + found.getClassName());
        }
        for (CIMObjectPath path : all(client.referenceNames(source, null, null))) {
            System.out.println("ReferenceNames " + path.getObjectName());
        }
        for (CIMInstance found : all(client.referenceInstances(source, null, null, false, null))) {
            System.out.println("References " + found.getClassName());
        }
    }

    private static void print(CIMInstance instance) {
        Set<String> properties = new TreeSet<>();
        for (CIMProperty<?> property : instance.getProperties()) {
            properties.add(property.getName() + "=" + property.getValue());
        }
        System.out.println(instance.getClassName() + " " + String.join(" ", properties));
    }

    private static <T> List<T> all(CloseableIterator<T> results) throws WBEMException {
        List<T> found = new ArrayList<>();
        while (results.hasNext()) {
            found.add(results.next());
        }
        if (results.getWBEMException() != null) throw results.getWBEMException();
        results.close();
        return found;
    }
}
