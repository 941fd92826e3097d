package telvofm;

/** The library is missing, is another one, or is loaded into a 32-bit process. */
public final class LibraryException extends TelvofmException {
    private static final long serialVersionUID = 1;

    LibraryException(String message, Throwable cause) {
        super(message, cause);
    }
}
