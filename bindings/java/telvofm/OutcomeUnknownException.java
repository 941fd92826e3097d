package telvofm;

/** The printer may have carried the command out, or not, or twice. */
public final class OutcomeUnknownException extends CallException {
    private static final long serialVersionUID = 1;

    OutcomeUnknownException(String call, int code, String name, String happened, String advice) {
        super(call, code, name, happened, CodeMeaning.Executed.UNKNOWN, advice);
    }

    /** After a call that returned 0 and left the printer with other totals than it should. */
    static OutcomeUnknownException doubt(String call, String happened) {
        return new OutcomeUnknownException(call, 0, "totals", happened, "Call recover.");
    }
}
