package telvofm;

/** Nothing reached the printer: none is open, or this session is closed. */
public final class NotExecutedException extends CallException {
    private static final long serialVersionUID = 1;

    NotExecutedException(String call, int code, String name, String happened, String advice) {
        super(call, code, name, happened, CodeMeaning.Executed.NO, advice);
    }

    /** Of a call on a session that is closed. */
    static NotExecutedException closed(String call) {
        return new NotExecutedException(call, -1, "notOpen", "This session is closed.", "Open another session.");
    }

    /** Of a call on a receipt that is none of the printer's now. */
    static NotExecutedException notOurs(String call) {
        return new NotExecutedException(call, -1, "notOpen", "This receipt was not begun, is over, or was begun while another was open.",
                "To cancel another one call destroyParagon through the session.");
    }
}
