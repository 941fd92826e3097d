package telvofm;

/** The printer understood the call and refused it. */
public final class RefusedException extends CallException {
    private static final long serialVersionUID = 1;

    RefusedException(String call, int code, String name, String happened, String advice) {
        super(call, code, name, happened, CodeMeaning.Executed.NO, advice);
    }
}
