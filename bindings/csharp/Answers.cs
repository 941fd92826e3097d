using System.Linq;

namespace Telvofm
{
    /// <summary>What the printer answers to the questions of a receipt, and which answers are believed: a line that damages a reply can
    /// leave a call with 0 and an empty text, and a connection that has shifted gives the answer of the call before.</summary>
    static class Answers
    {
        const string Call = "getVariableResultObject";

        /// <summary>One line of text. Throws OutcomeUnknownException for anything else, and as Session.Variable does.</summary>
        internal static string To(Session session, string question)
        {
            string answer = session.Variable(question);
            if (answer.Length == 0 || answer.Any(character => character < ' '))
            {
                throw OutcomeUnknownException.Doubt(Call, "What the printer answers for " + question + " is not one line of text.");
            }
            return answer;
        }

        /// <summary>The number of the last receipt, and the answers to these questions. The number is asked for before and behind them;
        /// throws OutcomeUnknownException when it is not the same then.</summary>
        internal static string[] WithLastNumber(Session session, params string[] questions)
        {
            string name = session.Questions.LastNumber, number = To(session, name);
            string[] answers = questions.Select(question => To(session, question)).ToArray();
            string again = To(session, name);
            if (again != number)
            {
                throw OutcomeUnknownException.Doubt(Call, "The printer has two answers for " + name + ": " + number + " and " + again + ".");
            }
            return new[] { number }.Concat(answers).ToArray();
        }
    }
}
