using System;
using System.Globalization;

namespace Telvofm
{
    // The calls of a receipt and its questions to the printer: none is made that could go into another one.
    public sealed partial class Receipt
    {
        /// <summary>Of the receipts of the session: whatever is open is this one.</summary>
        bool HasBegunLast
        {
            get { return session.BegunLast == this; }
        }

        bool IsOpen
        {
            get { return taken && !over && HasBegunLast; }
        }

        /// <summary>What is sent goes into whatever receipt the printer has open.</summary>
        void RequireOpen(string call)
        {
            if (doubt != null && !over)
            {
                throw doubt;
            }
            if (!IsOpen)
            {
                throw NotExecutedException.NotBegun(call);
            }
        }

        void Line(decimal value, string call, Func<int> function)
        {
            RequireOpen(call);
            Send(call, function);
            Total += value;
        }

        void Count(decimal amount)
        {
            Paid += amount;
            finished = Due() == 0;
        }

        /// <summary>What is left to pay, or to pay out, after this amount too; more than that is given back.</summary>
        decimal Due(decimal amount = 0)
        {
            decimal due = Total - Paid - amount;
            return Math.Sign(due) == Math.Sign(Total) ? due : 0;
        }

        /// <summary>One call of this receipt. Whatever leaves its outcome open is remembered.</summary>
        void Send(string call, Func<int> function)
        {
            try
            {
                session.Call(call, function);
            }
            catch (OutcomeUnknownException unknown)
            {
                doubt = unknown;
                throw;
            }
        }

        bool CanBeAsked
        {
            get { return questions.LastNumber != null; }
        }

        /// <summary>The last receipt's, before a begin. One wrong answer is not believed, and a connection that is dead or has shifted is
        /// opened again.</summary>
        string NumberWhileNoneIsOpen()
        {
            string[] last = null;
            try
            {
                last = Answers.WithLastNumber(session, questions.State);
            }
            catch (CallException)
            {
            }
            if (last == null || last[1] != questions.Closed)
            {
                if (last != null)
                {
                    RequireNotOpen();
                }
                session.Reopen();
                last = AskedAgain();
            }
            if (last[1] != questions.Closed)
            {
                RequireNotOpen();
                anotherOpen = true;
                throw NotExecutedException.AnotherOpen("paragonBegin");
            }
            return last[0];
        }

        void RequireNotOpen()
        {
            if (IsOpen)
            {
                throw NotExecutedException.AlreadyBegun("paragonBegin");
            }
        }

        string[] AskedAgain()
        {
            try
            {
                return Answers.WithLastNumber(session, questions.State);
            }
            catch (OutcomeUnknownException failure)
            {
                throw NotExecutedException.Unanswered("paragonBegin", failure);
            }
        }

        void CompareAnswer(string call, string question, decimal expected, string what)
        {
            if (CanBeAsked)
            {
                Compare(call, Answered(call, () => Answers.To(session, question)), expected, what);
            }
        }

        void Compare(string call, string answer, decimal expected, string what)
        {
            if (NumberOf(answer) != expected)
            {
                throw Doubt(call, "For the printer " + what + " is \"" + answer + "\", for the till " + Amounts.Written(expected) +
                                  ": something was carried out twice, or not at all.");
            }
        }

        /// <summary>What the questions give; one that fails leaves the call in doubt.</summary>
        TAnswer Answered<TAnswer>(string call, Func<TAnswer> ask)
        {
            try
            {
                return ask();
            }
            catch (CallException failure)
            {
                throw Doubt(call, "The printer does not say what it has done (" + failure.Reason + ").");
            }
        }

        /// <summary>It is certain what has become of it.</summary>
        void Finish(Recovery certain)
        {
            outcome = certain;
            over = true;
        }

        OutcomeUnknownException Doubt(string call, string happened)
        {
            doubt = OutcomeUnknownException.Doubt(call, happened);
            return doubt;
        }

        static decimal? NumberOf(string text)
        {
            decimal number;
            return decimal.TryParse(text.Trim(), NumberStyles.Number & ~NumberStyles.AllowThousands, CultureInfo.InvariantCulture, out number)
                ? number : (decimal?)null;
        }
    }
}
