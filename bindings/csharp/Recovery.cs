using System;
using Telvofm.Raw;

namespace Telvofm
{
    /// <summary>What has become of a receipt.</summary>
    public enum Verdict
    {
        /// <summary>It is sold; nothing is to be sold again.</summary>
        Sold,

        /// <summary>It is not, and none is open: it can be sold again.</summary>
        NotSold,

        /// <summary>The printer does not say; a person has to look at the paper.</summary>
        AskAPerson
    }

    /// <summary>What the printer says has become of a receipt.</summary>
    public sealed class Recovery
    {
        /// <summary>What has become of it.</summary>
        public readonly Verdict Verdict;

        /// <summary>Why, in one sentence for the cashier or a log.</summary>
        public readonly string Sentence;

        /// <summary>The receipt's number if it is sold, otherwise empty.</summary>
        public readonly string Number;

        internal Recovery(Verdict verdict, string sentence, string number = "")
        {
            Verdict = verdict;
            Sentence = sentence;
            Number = number;
        }

        /// <summary>"sold: ", "not sold: " or "ask a person: ", and the sentence.</summary>
        public override string ToString()
        {
            string verdict = Verdict == Verdict.Sold ? "sold" : Verdict == Verdict.NotSold ? "not sold" : "ask a person";
            return verdict + ": " + Sentence;
        }
    }

    public sealed partial class Receipt
    {
        /// <summary>Asks the printer what has become of this receipt. One that is still open is ended when it is paid as it
        /// should be, and cancelled otherwise; one that was open before this one began is left alone. Throws nothing for what the
        /// printer does, and may be called again. When its session is closed it asks nobody, whoever has opened
        /// another: a person has to look.</summary>
        public Recovery Recover()
        {
            if (!begun)
            {
                return new Recovery(Verdict.NotSold, "the receipt was not begun, or is cancelled");
            }
            if (!session.IsOpen)
            {
                return new Recovery(Verdict.AskAPerson, "the session of this receipt is closed; look at the printer's paper before it is sold " +
                                                        "again, or recover it as an interrupted receipt of another session");
            }
            if (anotherOpen)
            {
                return new Recovery(Verdict.AskAPerson, "another receipt was open before this one began, and is left alone; end it with " +
                                                        "paragonEnd or cancel it with destroyParagon, called through the session, before this " +
                                                        "one is sold again");
            }
            if (NumberBefore == null)
            {
                return new Recovery(Verdict.AskAPerson, "this printer cannot be asked; look at its paper before this receipt is sold again");
            }
            if (!HasBegunLast)
            {
                return new Recovery(Verdict.AskAPerson, "another receipt was begun since, and is left alone; look at the printer's paper before " +
                                                        "this one is sold again");
            }
            try
            {
                session.Reopen();
                Finish();
                Recovery recovery = Judged();
                over |= recovery.Verdict != Verdict.AskAPerson;
                return recovery;
            }
            catch (CallException failure)
            {
                return new Recovery(Verdict.AskAPerson, "the printer does not say what it has done; look at its paper before this receipt " +
                                                        "is sold again (" + failure.Call + ": code " + failure.Code + ")");
            }
        }

        /// <summary>Ends or cancels the receipt if it is open. Whether that worked, Judged sees.</summary>
        void Finish()
        {
            if (Asked(questions.LastNumber) != NumberBefore || Asked(questions.State) == questions.Closed)
            {
                return;
            }
            bool isPaid = finished && NumberOf(Asked(questions.Total)) == Total && NumberOf(Asked(questions.Due)) == 0;
            try
            {
                if (!isPaid || IsRefusedAsEmpty())
                {
                    session.Call("destroyParagon", () => Functions.destroyParagon(session.Device, 0, null));
                }
            }
            catch (CallException)
            {
            }
        }

        /// <summary>Ends the receipt, unless the printer refuses that and nothing was sold in it.</summary>
        bool IsRefusedAsEmpty()
        {
            try
            {
                session.Call("paragonEnd", () => Functions.paragonEnd(session.Device, 0, 0));
                return false;
            }
            catch (RefusedException)
            {
                return Total == 0 && Paid == 0;
            }
        }

        Recovery Judged()
        {
            string number = Asked(questions.LastNumber), total = Asked(questions.LastTotal);
            bool isClosed = Asked(questions.State) == questions.Closed;
            if (isClosed && number == NumberBefore)
            {
                return new Recovery(Verdict.NotSold, "receipt " + number + " is still the last one, and none is open; it can be sold again");
            }
            if (isClosed && NumberOf(total) == Total)
            {
                return new Recovery(Verdict.Sold, "receipt " + number + ", total " + Amounts.Written(Total), number);
            }
            return new Recovery(Verdict.AskAPerson,
                "the printer's last receipt is " + number + " with " + total + (isClosed ? "" : ", and one is open") + "; the till sold " +
                Amounts.Written(Total) + " after receipt " + NumberBefore + "; look at the paper before it is sold again");
        }
    }
}
