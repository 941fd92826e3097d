package telvofm;

import java.util.ArrayList;
import java.util.List;

/**
 * What the printer answers to the questions of a receipt, and which answers are believed: a line that damages a reply can leave a call
 * with 0 and an empty text, and a connection that has shifted gives the answer of the call before.
 */
final class Answers {
    private static final String CALL = "getVariableResultObject";

    private Answers() {}

    /** One line of text. Throws OutcomeUnknownException for anything else, and as Session.variable does. */
    static String to(Session session, String question) {
        String answer = session.variable(question);
        if (answer.isEmpty() || answer.chars().anyMatch(character -> character < ' ')) {
            throw OutcomeUnknownException.doubt(CALL, "What the printer answers for " + question + " is not one line of text.");
        }
        return answer;
    }

    /**
     * The number of the last receipt, and the answers to these questions. The number is asked for before and behind them; throws
     * OutcomeUnknownException when it is not the same then.
     */
    static List<String> withLastNumber(Session session, String... questions) {
        String name = session.questions.lastReceipt;
        List<String> answers = new ArrayList<>();
        answers.add(to(session, name));
        for (String question : questions) {
            answers.add(to(session, question));
        }
        String again = to(session, name);
        if (!again.equals(answers.get(0))) {
            throw OutcomeUnknownException.doubt(CALL,
                    "The printer has two answers for " + name + ": " + answers.get(0) + " and " + again + ".");
        }
        return answers;
    }
}
