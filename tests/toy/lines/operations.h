/* TOY: a shelf (u32) and a place on it (u32), host order, typed as "12/7". The shelf is at most 4095 when typed. */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_ToyFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_ToyFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_ToyCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_ToyHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_ToyCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_ToyLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_ToyLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_ToyEndian;

