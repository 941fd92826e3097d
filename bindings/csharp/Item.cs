namespace Telvofm
{
    /// <summary>The arguments of an item as bytes, all of them made before anything is sent.</summary>
    sealed class Item
    {
        internal readonly byte[] Name, Total, Vat, Quantity, UnitPrice, Unit;

        internal Item(string name, decimal total, char vat, decimal quantity, decimal unitPrice, string unit)
        {
            Name = Windows1250.Encode(name);
            Total = Amounts.Money(total);
            Vat = Windows1250.Encode(vat.ToString());
            Quantity = Amounts.Quantity(quantity);
            UnitPrice = Amounts.Money(unitPrice);
            Unit = Windows1250.Encode(unit);
        }
    }
}
