-- Product names in the reader's language: the map says which column and which heading belong to the locale.
select p.product_id, p.#$column{$locale}# as #'"' + $heading{$locale} + '"'#
from product p
where p.category = #"'" + $category{'hot ' + $kind} + "'"#
order by 2;
