package telvofm;

/** What the printer says has become of a receipt. */
public final class Recovery {
    /** In words that begin the sentence for the till. */
    public enum Verdict {
        SOLD("sold"),
        NOT_SOLD("not sold"),
        ASK_A_PERSON("ask a person");

        final String words;

        Verdict(String words) {
            this.words = words;
        }
    }

    public final Verdict verdict;
    public final String sentence;
    /** The receipt's number if it is sold, otherwise empty. */
    public final String number;

    Recovery(Verdict verdict, String sentence, String number) {
        this.verdict = verdict;
        this.sentence = sentence;
        this.number = number;
    }

    @Override
    public String toString() {
        return verdict.words + ": " + sentence;
    }
}
