package telvofm;

/** An amount that cannot be sent as it is. Nothing was sent. */
public final class AmountException extends TelvofmException {
    private static final long serialVersionUID = 1;

    AmountException(String message) {
        super(message, null);
    }
}
