package telvofm;

import java.math.BigDecimal;
import java.util.List;

/** What has become of a receipt, and how the printer is asked. */
public final class Recovery {
    /** What has become of it, in words that begin the sentence for the till. */
    public enum Verdict {
        /** Nothing is to be sold again. */
        SOLD("sold"),
        /** None is open: it can be sold again. */
        NOT_SOLD("not sold"),
        /** The printer does not say; a person has to look at the paper. */
        ASK_A_PERSON("ask a person");

        final String words;

        Verdict(String words) {
            this.words = words;
        }
    }

    /** What has become of it. */
    public final Verdict verdict;
    /** Why, in one sentence for the cashier or a log. */
    public final String sentence;
    /** The receipt's number if it is sold, otherwise empty. */
    public final String number;

    Recovery(Verdict verdict, String sentence, String number) {
        this.verdict = verdict;
        this.sentence = sentence;
        this.number = number;
    }

    /** "sold: ", "not sold: " or "ask a person: ", and the sentence. */
    @Override
    public String toString() {
        return verdict.words + ": " + sentence;
    }

    /**
     * Asks the printer what has become of a receipt of this total that was begun behind the number before. If it is still open it is ended
     * when the till has finished it and it is paid in full, and cancelled otherwise, as an empty one is whose end is refused.
     */
    static Recovery ask(Session session, String numberBefore, BigDecimal total, BigDecimal paid, boolean finished) {
        try {
            session.reopen();
            finish(session, numberBefore, total, paid, finished);
            return judged(session, numberBefore, total, finished);
        } catch (CallException failure) {
            return new Recovery(Verdict.ASK_A_PERSON, "the printer does not say what it has done; look at its paper before this receipt is "
                    + "sold again (" + failure.reason() + ")", "");
        }
    }

    /** Ends or cancels the receipt if it is open. Whether that worked, judged sees. */
    private static void finish(Session session, String numberBefore, BigDecimal total, BigDecimal paid, boolean finished) {
        Questions questions = session.questions;
        Functions functions = session.functions;
        List<String> last = Answers.withLastNumber(session, questions.state);
        if (!last.get(0).equals(numberBefore) || last.get(1).equals(questions.closed)) {
            return;
        }
        boolean isPaid = finished && Amounts.isNumber(Answers.to(session, questions.total), total)
                && Amounts.isNumber(Answers.to(session, questions.due), BigDecimal.ZERO);
        try {
            boolean isEmpty = total.signum() == 0 && paid.signum() == 0;
            if (!isPaid || (isEndRefused(session) && isEmpty)) {
                session.call("destroyParagon", () -> functions.destroyParagon(session.device, 0, null));
            }
        } catch (CallException seenByJudged) {
            return;
        }
    }

    private static boolean isEndRefused(Session session) {
        try {
            session.call("paragonEnd", () -> session.functions.paragonEnd(session.device, 0, 0));
            return false;
        } catch (RefusedException refused) {
            return true;
        }
    }

    static Recovery soldAs(String number, BigDecimal total) {
        return new Recovery(Verdict.SOLD, "receipt " + number + ", total " + Amounts.written(total), number);
    }

    private static Recovery judged(Session session, String numberBefore, BigDecimal total, boolean finished) {
        List<String> last = Answers.withLastNumber(session, session.questions.lastTotal, session.questions.state);
        String number = last.get(0);
        String lastTotal = last.get(1);
        boolean isClosed = last.get(2).equals(session.questions.closed);
        if (isClosed && number.equals(numberBefore)) {
            return new Recovery(Verdict.NOT_SOLD, "receipt " + number + " is still the last one, and none is open; it can be sold again", "");
        }
        if (isClosed && finished && Amounts.isNumber(lastTotal, total)) {
            return soldAs(number, total);
        }
        return new Recovery(Verdict.ASK_A_PERSON, "the printer's last receipt is " + number + " with " + lastTotal
                + (isClosed ? "" : ", and one is open") + "; the till sold " + Amounts.written(total) + " after receipt " + numberBefore
                + "; look at the paper before it is sold again", "");
    }
}
