using System;
using System.Globalization;

namespace Telvofm
{
    /// <summary>Amounts as the texts that the printer takes, in every culture. Nothing is rounded.</summary>
    static class Amounts
    {
        internal static string Money(decimal amount)
        {
            return Written(amount, 2, "0.00");
        }

        internal static string Quantity(decimal amount)
        {
            return Written(amount, 3, "0.000");
        }

        static string Written(decimal amount, int decimals, string form)
        {
            if (decimal.Round(amount, decimals) != amount)
            {
                throw new AmountException("The amount " + amount.ToString(CultureInfo.InvariantCulture) + " has more than " +
                                          decimals + " decimals, which the printer does not take; round it first.");
            }
            return amount.ToString(form, CultureInfo.InvariantCulture);
        }
    }

    /// <summary>An amount that cannot be sent as it is. Nothing was sent.</summary>
    public sealed class AmountException : TelvofmException
    {
        internal AmountException(string message) : base(message) { }
    }
}
