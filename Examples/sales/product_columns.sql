-- Products with the columns that a reader ticked, those for internal use left out. Each word comes once, in quotes.
select p.#csv(grep('!_id$', unique(split(' ', $columns))), ', p.', '"')#
from product p
where p.category in (#csv(sort(unique(split(',', $categories))))#)
order by p.product_id;
