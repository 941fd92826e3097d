package telvofm;

/** Whatever goes wrong here; the message says what to do. */
public abstract class TelvofmException extends RuntimeException {
    private static final long serialVersionUID = 1;

    protected TelvofmException(String message, Throwable cause) {
        super(message, cause);
    }
}
