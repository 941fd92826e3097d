package telvofm;

import com.sun.jna.Native;
import com.sun.jna.NativeLibrary;
import java.lang.reflect.Method;

/** Finds and loads the library, and says in one sentence why that did not work. */
final class TelvofmLibrary {
    private static final int VERSION = 106; // of the interface

    private TelvofmLibrary() {}

    /** The one that the variable TELVOFM_LIBRARY names, or that JNA finds under its usual name. JNA loads each once. */
    static Functions load() {
        requireBits(Native.POINTER_SIZE * 8);
        String named = System.getenv("TELVOFM_LIBRARY");
        return load(named == null ? "telvofm" : named);
    }

    static Functions load(String name) {
        NativeLibrary library;
        try {
            library = NativeLibrary.getInstance(name);
        } catch (UnsatisfiedLinkError missing) {
            throw new LibraryException(name + " cannot be loaded; put the 64-bit TelvoFM library on jna.library.path, or let TELVOFM_LIBRARY name it", missing);
        }
        for (Method function : Functions.class.getMethods()) {
            try {
                library.getFunction(function.getName());
            } catch (UnsatisfiedLinkError other) {
                throw new LibraryException(name + " is not this TelvoFM: it has no function " + function.getName() + "; let TELVOFM_LIBRARY name the right library", other);
            }
        }
        Functions functions = Native.load(name, Functions.class);
        if (functions.getVersion() != VERSION) {
            throw new LibraryException(name + " has version " + functions.getVersion() + " of the interface, and this package needs " + VERSION + "; take both from the same release", null);
        }
        return functions;
    }

    static void requireBits(int bits) {
        if (bits != 64) {
            throw new LibraryException("TelvoFM is a 64-bit library and this Java has " + bits + " bits; install a 64-bit Java", null);
        }
    }
}
