package telvofm;

/** Nothing reached the printer: none is open, this session is closed, or this receipt is not open. */
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
        return new NotExecutedException(call, -1, "notOpen", "This receipt was not begun, is over, or another one may be open.",
                "To cancel another one call destroyParagon through the session.");
    }

    /** Of what would go into another receipt than the one that it is called on. */
    static NotExecutedException notBegun(String call) {
        return new NotExecutedException(call, -1, "notOpen", "This receipt is not open: its begin has not worked, or it is over.",
                "Call recover if begin failed, and begin it again.");
    }

    /** Of a second begin of a receipt that is open. */
    static NotExecutedException alreadyBegun(String call) {
        return new NotExecutedException(call, -1, "notOpen", "This receipt is open already, and goes on.", "End it or cancel it first.");
    }

    /** Of a begin while a receipt is open that is not this one. */
    static NotExecutedException anotherOpen(String call) {
        return new NotExecutedException(call, -1, "notOpen", "Another receipt is open, and is left alone.", "Call recover.");
    }

    /** Of a begin when the printer does not say whether a receipt is open. */
    static NotExecutedException unanswered(String call, CallException question) {
        return new NotExecutedException(call, -1, "notOpen", "The printer does not say whether a receipt is open (" + question.reason()
                + ").", "Begin it again when the printer answers.");
    }
}
