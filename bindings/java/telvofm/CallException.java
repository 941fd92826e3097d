package telvofm;

import telvofm.CodeMeaning.Executed;

/** A call that did not succeed. */
public abstract class CallException extends TelvofmException {
    private static final long serialVersionUID = 1;

    /** The function of telvofm.h. */
    public final String call;
    /** What it returned. */
    public final int code;
    /** The code's name. */
    public final String name;
    /** What it means. */
    public final String happened;
    /** Whether the printer has carried the command out. */
    public final Executed executed;
    /** What to do. */
    public final String advice;

    CallException(String call, int code, String name, String happened, Executed executed, String advice) {
        super(call + ": code " + code + " (" + name + "): " + happened + " " + sentence(executed) + " " + advice, null);
        this.call = call;
        this.code = code;
        this.name = name;
        this.happened = happened;
        this.executed = executed;
        this.advice = advice;
    }

    /** Of a question that was not answered, for a sentence: what failed, or that the answer is none. */
    final String reason() {
        return code != 0 ? call + ": code " + code : happened.substring(0, happened.length() - 1);
    }

    private static String sentence(Executed executed) {
        switch (executed) {
        case YES:
            return "It was carried out.";
        case NO:
            return "It was not carried out.";
        default:
            return "Whether it was carried out is unknown.";
        }
    }

    /** What a call failed with that was answered in time, or slowly: then the printer may have refused what it had done already. */
    static CallException of(String call, int code, boolean slow) {
        for (CodeMeaning meaning : CodeMeaning.ALL) {
            if (meaning.first <= code && code <= meaning.last) {
                if (meaning.executed != Executed.NO || (slow && code > 0)) {
                    return new OutcomeUnknownException(call, code, meaning.name, meaning.happened, meaning.advice);
                }
                return code > 0 ? new RefusedException(call, code, meaning.name, meaning.happened, meaning.advice)
                        : new NotExecutedException(call, code, meaning.name, meaning.happened, meaning.advice);
            }
        }
        return new OutcomeUnknownException(call, code, "undocumented", "The library returned a code that it does not document.",
                "Ask the printer for its last receipt and totals before you repeat the call.");
    }
}
