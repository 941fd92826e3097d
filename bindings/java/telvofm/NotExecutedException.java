package telvofm;

/** Nothing reached the printer. */
public final class NotExecutedException extends CallException {
    private static final long serialVersionUID = 1;

    NotExecutedException(String call, int code, String name, String happened, String advice) {
        super(call, code, name, happened, CodeMeaning.Executed.NO, advice);
    }
}
