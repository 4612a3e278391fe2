extern const Type kToy;
