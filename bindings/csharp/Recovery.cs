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

    /// <summary>What has become of a receipt, and why.</summary>
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
        /// should be, and cancelled otherwise. Throws nothing for what the printer does, and may be called again: what is certain, as
        /// behind an End or a Cancel that worked, stays as it was said, and the printer is not asked again. When its session is
        /// closed it asks nobody, whoever has opened another: a person has to look.</summary>
        public Recovery Recover()
        {
            if (outcome != null)
            {
                return outcome;
            }
            if (anotherOpen)
            {
                return new Recovery(Verdict.AskAPerson, "another receipt is open, and this one was not begun; end that one with paragonEnd or " +
                                                        "cancel it with destroyParagon, called through the session, before this one is sold");
            }
            if (!begun)
            {
                return new Recovery(Verdict.NotSold, "the receipt was not begun");
            }
            if (!session.IsOpen)
            {
                return new Recovery(Verdict.AskAPerson, "the session of this receipt is closed; look at the printer's paper before it is sold " +
                                                        "again, or recover it as an interrupted receipt of another session");
            }
            if (!CanBeAsked || string.IsNullOrEmpty(NumberBefore))
            {
                return new Recovery(Verdict.AskAPerson, "this printer cannot be asked; look at its paper before this receipt is sold again");
            }
            if (!HasBegunLast)
            {
                return new Recovery(Verdict.AskAPerson, "another receipt was begun since, and is left alone; look at the printer's paper before " +
                                                        "this one is sold again");
            }
            Recovery recovery = AskedRecovery();
            if (recovery.Verdict != Verdict.AskAPerson)
            {
                Finish(recovery);
            }
            return recovery;
        }

        Recovery AskedRecovery()
        {
            try
            {
                session.Reopen();
                EndOrCancel();
                return Judged();
            }
            catch (CallException failure)
            {
                return new Recovery(Verdict.AskAPerson, "the printer does not say what it has done; look at its paper before this receipt " +
                                                        "is sold again (" + failure.Reason + ")");
            }
        }

        /// <summary>If it is open. Whether that worked, Judged sees.</summary>
        void EndOrCancel()
        {
            string[] last = Answers.WithLastNumber(session, questions.State);
            if (last[0] != NumberBefore || last[1] == questions.Closed)
            {
                return;
            }
            bool isPaid = finished && NumberOf(Answers.To(session, questions.Total)) == Total && NumberOf(Answers.To(session, questions.Due)) == 0;
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

        Recovery SoldAs(string number)
        {
            return new Recovery(Verdict.Sold, "receipt " + number + ", total " + Amounts.Written(Total), number);
        }

        Recovery Judged()
        {
            string[] last = Answers.WithLastNumber(session, questions.LastTotal, questions.State);
            string number = last[0], total = last[1];
            bool isClosed = last[2] == questions.Closed;
            if (isClosed && number == NumberBefore)
            {
                return new Recovery(Verdict.NotSold, "receipt " + number + " is still the last one, and none is open; it can be sold again");
            }
            if (isClosed && finished && NumberOf(total) == Total)
            {
                return SoldAs(number);
            }
            return new Recovery(Verdict.AskAPerson,
                "the printer's last receipt is " + number + " with " + total + (isClosed ? "" : ", and one is open") + "; the till sold " +
                Amounts.Written(Total) + " after receipt " + NumberBefore + "; look at the paper before it is sold again");
        }
    }
}
